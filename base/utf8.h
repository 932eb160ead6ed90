// UTF-8 (RFC 3629): no overlong forms, no surrogates, nothing beyond U+10FFFF. Any thread.
#pragma once

#include <optional>
#include <string_view>

namespace quorvantis::base {

/// Whether bytes are text.
bool isUTF8(std::string_view bytes);

/// Takes the first character off bytes that are not empty; where none begins, takes one byte and gives
/// nothing.
std::optional<char32_t> takeCharacter(std::string_view& bytes);

/// The bytes without the byte order mark that they may begin with.
constexpr std::string_view withoutByteOrderMark(std::string_view bytes) {
  return bytes.starts_with("\xEF\xBB\xBF") ? bytes.substr(3) : bytes;
}

/// Whether a byte of a text goes on with a character that began before it.
constexpr bool isContinuation(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

}  // namespace quorvantis::base
