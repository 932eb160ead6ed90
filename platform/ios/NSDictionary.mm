#include "platform/NSDictionary.h"

#include "platform/ios/bridge.h"

namespace quorvantis::platform {

using ios::adopted;
using ios::objectOf;
using ios::retained;

Object NSDictionary::objectForKey(const NSString& key) const {
  return retained([objectOf(*this) objectForKey:objectOf(key)]);
}

void NSDictionary::enumerateKeys(const std::function<void(const NSString& key)>& visit) const {
  for (id key in static_cast<::NSDictionary*>(objectOf(*this))) visit(retained<NSString>(key));
}

bool NSDictionary::isKindOf(const Object& object) {
  return [objectOf(object) isKindOfClass:[::NSDictionary class]];
}

NSMutableDictionary NSMutableDictionary::dictionary() {
  return adopted<NSMutableDictionary>([[::NSMutableDictionary alloc] init]);
}

void NSMutableDictionary::setObject(Object object, const NSString& forKey) const {
  [objectOf(*this) setObject:objectOf(object) forKey:objectOf(forKey)];
}

NSDictionary NSMutableDictionary::copy() const { return adopted<NSDictionary>([objectOf(*this) copy]); }

}  // namespace quorvantis::platform
