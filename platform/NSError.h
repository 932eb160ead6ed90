// What the platform says went wrong. Immutable; usable from any thread.
#pragma once

#include "platform/Object.h"

namespace quorvantis::platform {

class NSError : public Object {
 public:
  using Object::Object;
};

}  // namespace quorvantis::platform
