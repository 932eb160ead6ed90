#include "platform/UIDevice.h"

#import <UIKit/UIKit.h>

#include "platform/ios/bridge.h"

namespace quorvantis::platform {

namespace {

::UIDevice* deviceOf(const UIDevice& handle) { return ios::objectOf(handle); }

}  // namespace

UIDevice UIDevice::currentDevice() { return ios::retained<UIDevice>([::UIDevice currentDevice]); }

NSString UIDevice::systemVersion() const { return ios::retained<NSString>([deviceOf(*this) systemVersion]); }

NSString UIDevice::name() const { return ios::retained<NSString>([deviceOf(*this) name]); }

NSString UIDevice::model() const { return ios::retained<NSString>([deviceOf(*this) model]); }

}  // namespace quorvantis::platform
