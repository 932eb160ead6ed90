// A web address. Immutable; usable from any thread.
#pragma once

#include "platform/NSString.h"

namespace quorvantis::platform {

class QUORVANTIS_PUSH_API NSURL : public Object {
 public:
  using Object::Object;

  /// Nil when the string is nil, or not a URL by the rules of the running system version. Raises, at
  /// "length", if it is not a string.
  static NSURL URLWithString(const NSString& text);
};

}  // namespace quorvantis::platform
