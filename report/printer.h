// Lines of a report: indented, wrapped to the terminal's width, styled. One thread.
#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>

#include "console/terminal.h"

namespace quorvantis::report {

class Printer {
 public:
  Printer(const console::Terminal& terminal, std::ostream& out) : terminal_(terminal), out_(out) {}

  void paragraph(std::size_t indent, std::string_view text, console::Style style = console::Style::plain);
  /// Continuation lines are aligned with the text after the label, or start on the next line if there is too
  /// little room.
  void labelled(std::size_t indent, const std::string& label, const std::string& text);
  void line(std::string_view text = "") { out_ << text << '\n'; }

  [[nodiscard]] const console::Terminal& terminal() const { return terminal_; }

 private:
  const console::Terminal& terminal_;
  std::ostream& out_;
};

}  // namespace quorvantis::report
