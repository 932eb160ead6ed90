#include "console/near_text.h"

#include <algorithm>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

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

/// How many letters have to be changed, left out, put in or swapped with their neighbours to make one of the
/// other (the distance of Damerau and Levenshtein, in which no letter takes part twice).
std::size_t distance(std::u32string_view a, std::u32string_view b) {
  std::vector<std::size_t> before, last, row(b.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 1; i <= a.size(); ++i) {
    before = std::exchange(last, row);
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1)});
      const bool isSwap = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
      if (isSwap) row[j] = std::min(row[j], before[j - 2] + 1);
    }
  }
  return row.back();
}

bool differByAtMost(std::size_t most, std::u32string_view a, std::u32string_view b) {
  const std::size_t difference = a.size() > b.size() ? a.size() - b.size() : b.size() - a.size();
  return difference <= most && distance(a, b) <= most;
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
  constexpr std::size_t kLong = 12;
  for (const std::size_t most : {1U, 2U}) {
    for (const std::string_view name : known) {
      const std::u32string wanted = plain(name);
      if ((most == 1 || wanted.size() >= kLong) && differByAtMost(most, wanted, letters)) return name;
    }
  }
  return std::nullopt;
}

}  // namespace quorvantis::console
