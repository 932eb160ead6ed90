#include "report/printer.h"

namespace quorvantis::report {

void Printer::paragraph(std::size_t indent, std::string_view text, console::Style style) {
  for (const std::string& line : console::wrap(text, terminal_.width() - indent)) {
    out_ << std::string(indent, ' ') << terminal_.styled(style, line) << '\n';
  }
}

void Printer::labelled(std::size_t indent, const std::string& label, const std::string& text) {
  constexpr std::size_t kLeastRoom = 20;
  const std::size_t column = indent + console::columns(label) + 1;
  if (column + kLeastRoom > terminal_.width()) {
    paragraph(indent, label, console::Style::dim);
    paragraph(indent + 2, text);
    return;
  }
  bool isFirst = true;
  for (const std::string& line : console::wrap(text, terminal_.width() - column)) {
    out_ << std::string(isFirst ? indent : column, ' ');
    if (isFirst) out_ << terminal_.styled(console::Style::dim, label) << ' ';
    out_ << line << '\n';
    isFirst = false;
  }
}

}  // namespace quorvantis::report
