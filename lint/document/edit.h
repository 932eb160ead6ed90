// Ranges of a text, and changes to it. Any thread.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quorvantis::lint {

/// The bytes from `begin` up to `end`.
struct TextRange {
  std::size_t begin = 0, end = 0;
};

/// Replaces the range with `text`.
struct Edit {
  TextRange range;
  std::string text;
};

/// Edits that belong together: in the order of the text, without overlaps.
using Edits = std::vector<Edit>;

/// The length of the first `bytes` bytes in UTF-16 code units, as editors and JavaScript count. A byte that
/// is not UTF-8 counts as one.
std::size_t utf16Length(std::string_view text, std::size_t bytes);

}  // namespace quorvantis::lint
