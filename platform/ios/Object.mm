#include "platform/Object.h"

#include "platform/ios/bridge.h"

namespace quorvantis::platform {

using ios::objectOf;
using ios::selectorOf;

void* retainObject(void* object) noexcept { return [static_cast<id>(object) retain]; }

void releaseObject(void* object) noexcept { [static_cast<id>(object) release]; }

bool Object::isEqual(const Object& other) const {
  return *this && other && [objectOf(*this) isEqual:objectOf(other)];
}

bool Object::respondsToSelector(Selector selector) const {
  return [objectOf(*this) respondsToSelector:selectorOf(selector)];
}

void Object::send(Selector selector, const Object& argument) const {
  ios::send(objectOf(*this), selector, argument);
}

void doesNotRecognizeSelector(Selector selector) {
  @throw [NSException
      exceptionWithName:NSInvalidArgumentException
                 reason:[::NSString stringWithFormat:@"an object of QuorvantisPush does not recognize %s",
                                                     selector.name.data()]
               userInfo:nil];
}

}  // namespace quorvantis::platform
