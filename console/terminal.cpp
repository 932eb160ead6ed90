#include "console/terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

#include "base/utf8.h"
#include "console/width.h"

namespace quorvantis::console {

namespace {

constexpr std::size_t kUsualWidth = 80;
constexpr std::size_t kLeastWidth = 40;
constexpr std::size_t kMostWidth = 120;  // longer lines are hard to read

/// Removes the first character from the text, with the combining characters that follow it.
std::string_view takeCluster(std::string_view& text) {
  const std::string_view whole = text;
  base::takeCharacter(text);
  for (std::string_view rest = text; !text.empty(); text = rest) {
    const auto joining = base::takeCharacter(rest);
    if (!joining || widthOf(*joining) != 0) break;
  }
  return whole.substr(0, whole.size() - text.size());
}

/// One that a variation selector turns into an emoji is as wide as the others.
std::size_t widthOfCluster(std::string_view cluster) {
  constexpr std::string_view kAsEmoji = "\uFE0F";
  const bool isEmoji = cluster.find(kAsEmoji) != std::string_view::npos;
  const std::size_t width = widthOf(base::takeCharacter(cluster).value_or(U'\uFFFD'));
  return isEmoji ? 2 : width;
}

/// The length in bytes of the characters that fit into the columns, but at least of one.
std::size_t bytesOf(std::string_view text, std::size_t width) {
  std::size_t bytes = 0;
  for (std::size_t taken = 0; !text.empty();) {
    const std::string_view cluster = takeCluster(text);
    taken += widthOfCluster(cluster);
    if (taken > width && bytes != 0) break;
    bytes += cluster.size();
  }
  return bytes;
}

}  // namespace

Terminal Terminal::ofStandardOutput() {
  winsize size{};
  if (isatty(STDOUT_FILENO) == 0) return {kUsualWidth, false};
  const bool isKnown = ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
  const std::size_t width = isKnown ? size.ws_col : kUsualWidth;
  const char* noColour = std::getenv("NO_COLOR");
  const char* kind = std::getenv("TERM");
  const bool isDumb = kind != nullptr && std::string_view(kind) == "dumb";
  return {std::clamp(width, kLeastWidth, kMostWidth), !isDumb && (noColour == nullptr || *noColour == '\0')};
}

std::string Terminal::styled(Style style, std::string_view text) const {
  if (!colour_ || style == Style::plain) return std::string(text);
  return "\x1b[" + std::to_string(static_cast<int>(style)) + "m" + std::string(text) + "\x1b[0m";
}

std::size_t columns(std::string_view text) {
  std::size_t width = 0;
  while (!text.empty()) width += widthOfCluster(takeCluster(text));
  return width;
}

std::vector<std::string> wrap(std::string_view text, std::size_t width) {
  std::vector<std::string> lines;
  while (columns(text) > width) {
    const std::size_t most = bytesOf(text, width);
    const std::size_t blank = text.substr(0, most + 1).rfind(' ');
    const std::size_t comma = text.substr(0, most).rfind(',');
    const bool hasBlank = blank != std::string_view::npos && blank != 0;
    const bool hasComma = comma != std::string_view::npos;
    if (hasBlank && (!hasComma || blank > comma)) {
      lines.emplace_back(text.substr(0, blank));
      text.remove_prefix(blank + 1);
    } else {
      const std::size_t end = hasComma ? comma + 1 : most;
      lines.emplace_back(text.substr(0, end));
      text.remove_prefix(end);
    }
  }
  lines.emplace_back(text);
  return lines;
}

std::string padded(std::string_view text, std::size_t width) {
  const std::size_t taken = columns(text);
  return std::string(text) + std::string(width > taken ? width - taken : 0, ' ');
}

}  // namespace quorvantis::console
