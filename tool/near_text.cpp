#include "tool/near_text.h"

#include <algorithm>
#include <string>

namespace quorvantis::tool {

namespace {

/// Lower case, without blanks and joints.
std::string plain(std::string_view text) {
  std::string letters;
  for (const char character : text) {
    if (std::string_view(" \t\r\n-_").find(character) != std::string_view::npos) continue;
    const bool isUpper = character >= 'A' && character <= 'Z';
    letters += isUpper ? static_cast<char>(character - 'A' + 'a') : character;
  }
  return letters;
}

bool differByOne(std::string_view a, std::string_view b) {
  if (a.size() > b.size()) std::swap(a, b);
  if (b.size() - a.size() > 1) return false;
  const auto [atA, atB] = std::mismatch(a.begin(), a.end(), b.begin());
  const auto restA = atA + (a.size() == b.size() && atA != a.end() ? 1 : 0);
  const auto restB = atB + (atB != b.end() ? 1 : 0);
  return std::equal(restA, a.end(), restB, b.end());
}

}  // namespace

std::optional<std::string_view> nearestTo(std::string_view text, std::span<const std::string_view> known) {
  constexpr std::size_t kLongest = 64;  // of what anybody would call misspelt
  if (text.size() > kLongest || std::find(known.begin(), known.end(), text) != known.end())
    return std::nullopt;
  const std::string letters = plain(text);
  for (const std::string_view name : known) {
    if (plain(name) == letters) return name;
  }
  for (const std::string_view name : known) {
    if (differByOne(plain(name), letters)) return name;
  }
  return std::nullopt;
}

}  // namespace quorvantis::tool
