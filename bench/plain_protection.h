// The library's protection of bodies written straight on OpenSSL's cipher, MAC and base64: the least that the
// format asks for, without the checks of what comes from outside. Any thread.
#pragma once

#include <string>
#include <string_view>

namespace quorvantis::bench {

std::string sealPlainly(std::string_view body, std::string_view key);

/// Empty when the tag does not match.
std::string openPlainly(std::string_view sealed, std::string_view key);

}  // namespace quorvantis::bench
