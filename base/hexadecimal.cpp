#include "base/hexadecimal.h"

#include <charconv>

namespace quorvantis::base {

std::string hexadecimal(std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string digits;
  digits.reserve(bytes.size() * 2);
  for (const char character : bytes) {
    const auto byte = static_cast<unsigned char>(character);
    digits += kDigits[byte >> 4];
    digits += kDigits[byte & 15];
  }
  return digits;
}

std::optional<std::string> bytesFromHexadecimal(std::string_view digits) {
  if (digits.size() % 2 != 0) return std::nullopt;
  std::string bytes;
  bytes.reserve(digits.size() / 2);
  for (std::size_t i = 0; i < digits.size(); i += 2) {
    const char* const pair = digits.data() + i;
    unsigned byte = 0;
    if (std::from_chars(pair, pair + 2, byte, 16).ptr != pair + 2) return std::nullopt;
    bytes += static_cast<char>(byte);
  }
  return bytes;
}

}  // namespace quorvantis::base
