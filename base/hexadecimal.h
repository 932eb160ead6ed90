// Bytes as hexadecimal digits. Any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvantis::base {

/// Two lower-case digits per byte.
std::string hexadecimal(std::string_view bytes);

/// The bytes that digits of either case stand for; nothing for an odd count or for other characters.
std::optional<std::string> bytesFromHexadecimal(std::string_view digits);

}  // namespace quorvantis::base
