#include "lint/document/json_text.h"

#include <algorithm>

namespace quorvantis::lint {

namespace {

std::size_t endOfString(std::string_view text, std::size_t offset) {
  for (std::size_t at = offset + 1; at < text.size(); ++at) {
    if (text[at] == '"') return at + 1;
    if (text[at] == '\\') ++at;
  }
  return text.size();
}

std::size_t endOfContainer(std::string_view text, std::size_t offset) {
  std::size_t depth = 0;
  for (std::size_t at = offset; at < text.size();) {
    if (text[at] == '"') {
      at = endOfString(text, at);
      continue;
    }
    if (text[at] == '{' || text[at] == '[') ++depth;
    if (text[at] == '}' || text[at] == ']') --depth;
    ++at;
    if (depth == 0) return at;
  }
  return text.size();
}

}  // namespace

std::size_t skipBlanks(std::string_view text, std::size_t offset) {
  return std::min(text.find_first_not_of(kBlanks, offset), text.size());
}

std::size_t endOfValue(std::string_view text, std::size_t offset) {
  if (offset >= text.size()) return text.size();
  if (text[offset] == '"') return endOfString(text, offset);
  if (text[offset] == '{' || text[offset] == '[') return endOfContainer(text, offset);
  return std::min(text.find_first_of(",]} \t\r\n", offset), text.size());
}

}  // namespace quorvantis::lint
