#include "platform/UIApplication.h"

#import <UIKit/UIKit.h>

#include "platform/ios/bridge.h"

namespace quorvantis::platform {

namespace {

::UIApplication* applicationOf(const UIApplication& handle) { return ios::objectOf(handle); }

}  // namespace

UIApplication UIApplication::sharedApplication() {
  return ios::retained<UIApplication>([::UIApplication sharedApplication]);
}

UIApplicationState UIApplication::applicationState() const {
  return static_cast<UIApplicationState>([applicationOf(*this) applicationState]);
}

void UIApplication::setApplicationIconBadgeNumber(NSInteger number) const {
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wdeprecated-declarations"  // since iOS 17; its successor came with iOS 16
  [applicationOf(*this) setApplicationIconBadgeNumber:number];
#pragma clang diagnostic pop
}

void UIApplication::registerForRemoteNotifications() const {
  [applicationOf(*this) registerForRemoteNotifications];
}

void UIApplication::openURL(const NSURL& url) const {
  [applicationOf(*this) openURL:ios::objectOf(url)
                        options:@{}
              completionHandler:^(BOOL /*success*/){
              }];
}

}  // namespace quorvantis::platform
