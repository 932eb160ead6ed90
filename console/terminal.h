// What the commands know of where their output goes: its width, and whether it takes colour. Any thread.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quorvantis::console {

enum class Style { plain, bold, dim, red, green, yellow, blue, magenta, cyan };

class Terminal {
 public:
  /// Standard output: coloured when it is a terminal that is not dumb, and NO_COLOR is not set; 80 columns
  /// wide when it is none.
  static Terminal ofStandardOutput();

  Terminal(std::size_t width, bool colour) : width_(width), colour_(colour) {}

  /// In columns, 40 at least.
  [[nodiscard]] std::size_t width() const { return width_; }

  /// The text in that style, or as it is where there is no colour.
  [[nodiscard]] std::string styled(Style style, std::string_view text) const;

 private:
  std::size_t width_;
  bool colour_;
};

/// The columns that a text takes, one for each character.
std::size_t columns(std::string_view text);

/// The text in lines of at most `width` columns, broken at blanks where there are any, else after
/// commas.
std::vector<std::string> wrap(std::string_view text, std::size_t width);

/// The text with blanks behind it, `width` columns wide in all.
std::string padded(std::string_view text, std::size_t width);

}  // namespace quorvantis::console
