#include "platform/NSUserDefaults.h"

#include "platform/ios/bridge.h"

namespace quorvantis::platform {

using ios::objectOf;
using ios::retained;

NSUserDefaults NSUserDefaults::standardUserDefaults() {
  return retained<NSUserDefaults>([::NSUserDefaults standardUserDefaults]);
}

Object NSUserDefaults::objectForKey(const NSString& key) const {
  return retained([objectOf(*this) objectForKey:objectOf(key)]);
}

void NSUserDefaults::setObject(const Object& object, const NSString& forKey) const {
  [objectOf(*this) setObject:objectOf(object) forKey:objectOf(forKey)];
}

bool NSUserDefaults::synchronize() const {
  return [static_cast<::NSUserDefaults*>(objectOf(*this)) synchronize];
}

}  // namespace quorvantis::platform
