#include "console/near_text.h"

#include <algorithm>
#include <string>

#include "base/utf8.h"

namespace quorvantis::console {

namespace {

bool isBlankOrJoint(char32_t character) {
  constexpr std::u32string_view kBlanksAndJoints = U" \t\r\n-_\u00A0\u202F\u3000\uFEFF";
  const bool isSpaceOfSomeWidth = character >= U'\u2000' && character <= U'\u200F';
  return isSpaceOfSomeWidth || kBlanksAndJoints.find(character) != std::u32string_view::npos;
}

/// The characters in lower case, without blanks and separators.
std::u32string plain(std::string_view text) {
  std::u32string letters;
  while (!text.empty()) {
    const char32_t character = base::takeCharacter(text).value_or(U'\uFFFD');
    if (isBlankOrJoint(character)) continue;
    const bool isUpper = character >= U'A' && character <= U'Z';
    letters += isUpper ? character - U'A' + U'a' : character;
  }
  return letters;
}

bool differByOne(std::u32string_view a, std::u32string_view b) {
  if (a.size() > b.size()) std::swap(a, b);
  if (b.size() - a.size() > 1) return false;
  const auto [atA, atB] = std::mismatch(a.begin(), a.end(), b.begin());
  const auto restA = atA + (a.size() == b.size() && atA != a.end() ? 1 : 0);
  const auto restB = atB + (atB != b.end() ? 1 : 0);
  return std::equal(restA, a.end(), restB, b.end());
}

}  // namespace

std::optional<std::string_view> nearestTo(std::string_view text, std::span<const std::string_view> known) {
  constexpr std::size_t kLongest = 64;  // longer texts are not misspelt names
  if (text.size() > kLongest || std::find(known.begin(), known.end(), text) != known.end())
    return std::nullopt;
  const std::u32string letters = plain(text);
  for (const std::string_view name : known) {
    if (plain(name) == letters) return name;
  }
  for (const std::string_view name : known) {
    if (differByOne(plain(name), letters)) return name;
  }
  return std::nullopt;
}

}  // namespace quorvantis::console
