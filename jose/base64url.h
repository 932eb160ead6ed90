// Base64 with the URL-safe alphabet and without padding (RFC 4648, section 5). Any thread.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quorvantis::jose {

/// How many bytes the text encodes; nothing when it is not their canonical encoding.
std::optional<std::size_t> decodedSize(std::string_view text);

/// The bytes; nothing when the text is not their canonical encoding.
std::optional<std::string> decodeBase64url(std::string_view text);

}  // namespace quorvantis::jose
