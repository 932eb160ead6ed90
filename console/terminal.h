// Where a command's output goes: its width, and whether it supports colour. Any thread.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quorvantis::console {

/// With the codes of ANSI terminals (ECMA-48, "select graphic rendition").
enum class Style { plain = 0, bold = 1, dim = 2, red = 31, green, yellow, blue, magenta, cyan };

class Terminal {
 public:
  /// Standard output: in colour when it is a terminal that is not dumb, and NO_COLOR is not set; 80 columns
  /// wide when it is not a terminal.
  static Terminal ofStandardOutput();

  Terminal(std::size_t width, bool colour) : width_(width), colour_(colour) {}

  /// In columns, 40 at least.
  [[nodiscard]] std::size_t width() const { return width_; }

  /// The text in that style, or unchanged without colour.
  [[nodiscard]] std::string styled(Style style, std::string_view text) const;

 private:
  std::size_t width_;
  bool colour_;
};

/// The number of columns that a text takes.
std::size_t columns(std::string_view text);

/// Breaks the text into lines of at most `width` columns, at blanks if possible, else after commas.
std::vector<std::string> wrap(std::string_view text, std::size_t width);

/// The text, padded with blanks to `width` columns.
std::string padded(std::string_view text, std::size_t width);

}  // namespace quorvantis::console
