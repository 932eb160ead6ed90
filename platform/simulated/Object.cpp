#include "platform/Object.h"

#include "platform/simulated/Instance.h"
#include "platform/simulated/Raised.h"

namespace quorvantis::platform {

using simulated::Instance;
using simulated::instanceOf;

void* retainObject(void* object) noexcept {
  if (object != nullptr) static_cast<Instance*>(object)->retain();
  return object;
}

void releaseObject(void* object) noexcept {
  if (object != nullptr) static_cast<Instance*>(object)->release();
}

bool Object::isEqual(const Object& other) const {
  return *this && other && instanceOf(*this)->isEqual(*instanceOf(other));
}

bool Object::respondsToSelector(Selector selector) const {
  return *this && instanceOf(*this)->respondsToSelector(selector);
}

void Object::send(Selector selector, const Object& argument) const {
  if (*this) instanceOf(*this)->performSelector(selector, argument);
}

void doesNotRecognizeSelector(Selector selector) {
  throw simulated::Raised(selector);
}

}  // namespace quorvantis::platform
