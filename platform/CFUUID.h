// Universally unique identifiers. Any thread.
#pragma once

#include "platform/NSString.h"

namespace quorvantis::platform {

class CFUUID : public Object {
 public:
  using Object::Object;
};

/// A new identifier.
QUORVANTIS_PUSH_API CFUUID CFUUIDCreate();

/// Its text form: 36 characters, upper-case digits on a phone.
QUORVANTIS_PUSH_API NSString CFUUIDCreateString(const CFUUID& uuid);

}  // namespace quorvantis::platform
