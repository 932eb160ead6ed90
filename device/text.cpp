#include "device/text.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include "base/ascii.h"

namespace quorvantis::device {

namespace {

// Removes the leading digits from the text and returns them, without leading zeros.
std::string_view takeNumber(std::string_view& text) {
  const std::size_t end = std::min(text.find_first_not_of("0123456789"), text.size());
  std::string_view digits = text.substr(0, end);
  text.remove_prefix(end);
  digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
  return digits;
}

int compareNumbers(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return a.size() < b.size() ? -1 : 1;
  return a.compare(b);
}

bool isAllowedInURI(char c) {
  const bool isAlphanumeric = base::isDigit(c) || base::isLetter(c);
  return isAlphanumeric || std::string_view("-._~:/?#[]@!$&'()*+,;=%").find(c) != std::string_view::npos;
}

}  // namespace

int compareNumerically(std::string_view a, std::string_view b) {
  while (!a.empty() && !b.empty()) {
    if (base::isDigit(a.front()) && base::isDigit(b.front())) {
      const int order = compareNumbers(takeNumber(a), takeNumber(b));
      if (order != 0) return order;
    } else {
      if (a.front() != b.front()) return a.front() < b.front() ? -1 : 1;
      a.remove_prefix(1);
      b.remove_prefix(1);
    }
  }
  if (a.empty() && b.empty()) return 0;
  return a.empty() ? -1 : 1;
}

std::int64_t integerValue(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
  if (text.starts_with('+') && text.size() > 1 && base::isDigit(text[1])) text.remove_prefix(1);
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc::result_out_of_range) return number;
  return text.starts_with('-') ? std::numeric_limits<std::int64_t>::min()
                               : std::numeric_limits<std::int64_t>::max();
}

std::int64_t integerValue(double real) {
  constexpr double kTooLarge = 9223372036854775808.0;  // 2^63
  if (real >= kTooLarge) return std::numeric_limits<std::int64_t>::max();
  if (real < -kTooLarge) return std::numeric_limits<std::int64_t>::min();
  return static_cast<std::int64_t>(real);
}

std::optional<std::string> urlFrom(std::string_view text, std::string_view systemVersion) {
  if (text.empty()) return std::nullopt;
  const bool encodes = compareNumerically(systemVersion, "17.0") >= 0;
  std::string url;
  for (const char c : text) {
    if (isAllowedInURI(c)) {
      url += c;
    } else if (encodes) {
      constexpr char kDigits[] = "0123456789ABCDEF";
      const auto byte = static_cast<unsigned char>(c);
      url += {'%', kDigits[byte >> 4], kDigits[byte & 0xF]};
    } else {
      return std::nullopt;
    }
  }
  return url;
}

}  // namespace quorvantis::device
