#include "tool/link_text.h"

#include <algorithm>

namespace quorvantis::tool {

namespace {

bool isLetter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

bool isScheme(std::string_view text) {
  return !text.empty() && isLetter(text.front()) && std::all_of(text.begin(), text.end(), [](char c) {
    return isLetter(c) || (c >= '0' && c <= '9') || c == '+' || c == '-' || c == '.';
  });
}

bool isWeb(std::string_view scheme) {
  constexpr std::string_view kHTTP = "http";
  const auto isSameLetter = [](char a, char b) { return (a | 0x20) == b; };
  if (scheme.size() == kHTTP.size() + 1 && (scheme.back() | 0x20) == 's') scheme.remove_suffix(1);
  return std::equal(scheme.begin(), scheme.end(), kHTTP.begin(), kHTTP.end(), isSameLetter);
}

}  // namespace

std::string problemOfLink(std::string_view text) {
  if (text.empty()) return "it is empty";
  if (text.front() == ' ' || text.back() == ' ') return "a blank stands at its end or its beginning";
  const std::size_t colon = text.find(':');
  if (colon == std::string_view::npos || !isScheme(text.substr(0, colon))) {
    return "it does not begin with a scheme, such as https:";
  }
  const std::string_view rest = text.substr(colon + 1);
  if (rest.empty()) return "nothing follows the scheme";
  if (!isWeb(text.substr(0, colon))) return {};
  if (!rest.starts_with("//")) return "\"//\" and a host are missing";
  const std::string_view host = rest.substr(2, rest.find_first_of("/?#:", 2) - 2);
  return host.empty() ? "its host is missing" : "";
}

}  // namespace quorvantis::tool
