#include "platform/NSObject.h"

#include "platform/ios/bridge.h"

namespace quorvantis::platform {

NSObject::NSObject(void* front) : front_(front), ownsFront_(false) {}

NSObject::~NSObject() = default;

Object NSObject::self() const { return Object::retain(front_); }

bool NSObject::respondsToSelector(Selector selector) const { return self().respondsToSelector(selector); }

void NSObject::performSelector(Selector selector, const Object& withObject) {
  self().send(selector, withObject);
}

}  // namespace quorvantis::platform
