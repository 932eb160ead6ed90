// A connection of the URL loading system. The library holds one in a field that nothing fills, so it needs no
// operation.
#pragma once

#include "platform/Object.h"

namespace quorvantis::platform {

class NSURLConnection : public Object {
 public:
  using Object::Object;
};

}  // namespace quorvantis::platform
