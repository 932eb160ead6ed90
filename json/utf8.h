// Whether bytes are text. Any thread.
#pragma once

#include <string_view>

namespace quorvantis::json {

/// Well-formed UTF-8 (RFC 3629): no overlong forms, no surrogates, nothing beyond U+10FFFF.
bool isUTF8(std::string_view bytes);

}  // namespace quorvantis::json
