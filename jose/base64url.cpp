#include "jose/base64url.h"

#include <array>
#include <cstdint>

namespace quorvantis::jose {
namespace {

constexpr auto kDigits = [] {
  constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_";
  std::array<std::int8_t, 256> digits{};
  digits.fill(-1);
  for (std::size_t i = 0; i < alphabet.size(); ++i) {
    digits[static_cast<unsigned char>(alphabet[i])] = static_cast<std::int8_t>(i);
  }
  return digits;
}();

/// The value of the digit, or -1.
int digit(char character) {
  return kDigits[static_cast<unsigned char>(character)];
}

}  // namespace

std::optional<std::size_t> decodedSize(std::string_view text) {
  for (const char character : text) {
    if (digit(character) < 0) return std::nullopt;
  }
  const std::size_t over = text.size() % 4;
  if (over == 1) return std::nullopt;
  const int unused = over == 2 ? 0x0F : over == 3 ? 0x03 : 0;
  if (over != 0 && (digit(text.back()) & unused) != 0) return std::nullopt;
  return text.size() / 4 * 3 + (over == 0 ? 0 : over - 1);
}

std::optional<std::string> decodeBase64url(std::string_view text) {
  const auto size = decodedSize(text);
  if (!size) return std::nullopt;
  std::string bytes;
  bytes.reserve(*size);
  std::uint32_t bits = 0;
  int count = 0;
  for (const char character : text) {
    bits = bits << 6U | static_cast<std::uint32_t>(digit(character));
    count += 6;
    if (count < 8) continue;
    count -= 8;
    bytes += static_cast<char>(bits >> static_cast<unsigned>(count) & 0xFFU);
  }
  return bytes;
}

}  // namespace quorvantis::jose
