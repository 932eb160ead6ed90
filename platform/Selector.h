// The name of a message, as the platform's runtime writes it ("onGetToken:"). A plain value, usable from any
// thread.
#pragma once

#include <string_view>

namespace quorvantis::platform {

struct Selector {
  std::string_view name;  ///< Static, NUL-terminated.

  friend constexpr bool operator==(Selector a, Selector b) { return a.name == b.name; }
};

}  // namespace quorvantis::platform
