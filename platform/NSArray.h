// An ordered collection. Immutable; usable from any thread.
#pragma once

#include <cstddef>

#include "platform/Object.h"

namespace quorvantis::platform {

class QUORVANTIS_PUSH_API NSArray : public Object {
 public:
  using Object::Object;

  /// Raises when there is no such element. Nil gives nil.
  [[nodiscard]] Object objectAtIndex(std::size_t index) const;
};

}  // namespace quorvantis::platform
