// UTF-8 (RFC 3629): no overlong forms, no surrogates, nothing beyond U+10FFFF. Any thread.
#pragma once

#include <optional>
#include <string_view>

namespace quorvantis::base {

/// Whether the bytes are valid UTF-8.
bool isUTF8(std::string_view bytes);

/// Removes the first character from `bytes`, which must not be empty, and returns it; where none begins,
/// removes one byte and returns nothing.
std::optional<char32_t> takeCharacter(std::string_view& bytes);

constexpr bool startsWithByteOrderMark(std::string_view bytes) {
  return bytes.starts_with("\xEF\xBB\xBF");
}

/// The bytes without a leading byte order mark.
constexpr std::string_view withoutByteOrderMark(std::string_view bytes) {
  return startsWithByteOrderMark(bytes) ? bytes.substr(3) : bytes;
}

/// Whether a byte continues a character that began before it.
constexpr bool isContinuation(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

}  // namespace quorvantis::base
