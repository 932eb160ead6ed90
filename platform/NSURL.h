// A web address. Immutable; usable from any thread.
#pragma once

#include "platform/NSString.h"

namespace quorvantis::platform {

class QUORVANTIS_PUSH_API NSURL : public Object {
 public:
  using Object::Object;

  /// Nil when the string is not a URL by the rules of the running system version.
  static NSURL URLWithString(const NSString& text);
};

}  // namespace quorvantis::platform
