#include "platform/NSBundle.h"

#include "platform/ios/bridge.h"

namespace quorvantis::platform {

using ios::objectOf;
using ios::retained;

NSBundle NSBundle::mainBundle() { return retained<NSBundle>([::NSBundle mainBundle]); }

NSBundle NSBundle::bundleForClass(Class aClass) {
  return retained<NSBundle>([::NSBundle bundleForClass:ios::runtimeClass(aClass)]);
}

NSBundle NSBundle::bundleWithIdentifier(const NSString& identifier) {
  return retained<NSBundle>([::NSBundle bundleWithIdentifier:objectOf(identifier)]);
}

NSDictionary NSBundle::infoDictionary() const {
  return retained<NSDictionary>([static_cast<::NSBundle*>(objectOf(*this)) infoDictionary]);
}

}  // namespace quorvantis::platform
