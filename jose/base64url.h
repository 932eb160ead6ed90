// Base64 with the alphabet for addresses and without padding (RFC 4648, section 5). Any thread.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quorvantis::jose {

/// How many bytes the text stands for; nothing when it is not the one way to write them.
std::optional<std::size_t> decodedSize(std::string_view text);

/// The bytes; nothing when the text is not the one way to write them.
std::optional<std::string> decodeBase64url(std::string_view text);

}  // namespace quorvantis::jose
