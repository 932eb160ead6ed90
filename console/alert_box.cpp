#include "console/alert_box.h"

#include <algorithm>
#include <sstream>

#include "console/terminal.h"
#include "console/wording.h"

namespace quorvantis::console {

namespace {

constexpr std::size_t kLeastInside = 24;
constexpr std::size_t kMostLines = 8;  // further lines are cut; a phone's alert scrolls

std::string repeated(const char* character, std::size_t times) {
  std::string line;
  for (std::size_t i = 0; i < times; ++i) line += character;
  return line;
}

void append(const std::string& text, std::size_t width, std::vector<std::string>& lines) {
  constexpr std::size_t kLongest = 2000;
  std::istringstream paragraphs(shortened(text, kLongest));
  std::size_t count = 0;
  for (std::string paragraph; std::getline(paragraphs, paragraph);) {
    for (const std::string& line : wrap(paragraph, width)) {
      if (++count > kMostLines) {
        lines.emplace_back("…");
        return;
      }
      lines.push_back(line);
    }
  }
}

}  // namespace

std::vector<std::string> alertBox(const std::string& title, const std::string& message,
                                  const std::vector<std::string>& buttons, std::size_t width) {
  constexpr std::size_t kFrame = 4;
  const std::size_t most = std::max(width, kLeastInside + kFrame) - kFrame;
  std::vector<std::string> text;
  append(title, most, text);
  append(message, most, text);
  std::size_t inside = kLeastInside;
  for (const std::string& line : text) inside = std::max(inside, columns(line));

  const auto row = [&](const std::string& line) {
    const std::size_t left = (inside - std::min(inside, columns(line))) / 2;
    return "│ " + padded(std::string(left, ' ') + line, inside) + " │";
  };
  const std::string rule = repeated("─", inside + 2);
  std::vector<std::string> box{"╭" + rule + "╮"};
  if (text.empty()) box.push_back(row(""));
  for (const std::string& line : text) box.push_back(row(line));
  for (const std::string& button : buttons) {
    box.push_back("├" + rule + "┤");
    box.push_back(row(button));
  }
  box.push_back("╰" + rule + "╯");
  return box;
}

}  // namespace quorvantis::console
