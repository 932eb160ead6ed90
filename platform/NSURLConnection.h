// A connection of the URL loading system. The library only has a field of this type, which is never set, so
// it needs no operations.
#pragma once

#include "platform/Object.h"

namespace quorvantis::platform {

class NSURLConnection : public Object {
 public:
  using Object::Object;
};

}  // namespace quorvantis::platform
