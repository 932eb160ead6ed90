// An error of the platform's. Immutable; usable from any thread.
#pragma once

#include "platform/Object.h"

namespace quorvantis::platform {

class NSError : public Object {
 public:
  using Object::Object;
};

}  // namespace quorvantis::platform
