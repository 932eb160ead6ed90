// The library's encryption of bodies written directly with OpenSSL's cipher, MAC and base64: the minimum for
// the format, without validating input. Any thread.
#pragma once

#include <string>
#include <string_view>

namespace quorvantis::bench {

std::string sealPlainly(std::string_view body, std::string_view key);

/// Empty when the tag does not match.
std::string openPlainly(std::string_view sealed, std::string_view key);

}  // namespace quorvantis::bench
