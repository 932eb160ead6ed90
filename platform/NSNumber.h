// A number, or any object that understands integerValue, as a string does. Immutable; usable from any thread.
#pragma once

#include <cstdint>

#include "platform/Object.h"

namespace quorvantis::platform {

using NSInteger = std::intptr_t;

class QUORVANTIS_PUSH_API NSNumber : public Object {
 public:
  using Object::Object;

  /// Raises if the receiver has no integer value. Nil gives 0. A real loses its fraction.
  [[nodiscard]] NSInteger integerValue() const;
};

}  // namespace quorvantis::platform
