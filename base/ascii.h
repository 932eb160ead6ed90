// Letters and digits of ASCII, whatever the locale. Any thread.
#pragma once

#include <algorithm>
#include <string>

namespace quorvantis::base {

constexpr bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

constexpr char lowerCase(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

constexpr bool isLetter(char c) {
  return lowerCase(c) >= 'a' && lowerCase(c) <= 'z';
}

/// The text with its ASCII letters in lower case; other bytes stay.
inline std::string lowerCase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](char c) { return lowerCase(c); });
  return text;
}

}  // namespace quorvantis::base
