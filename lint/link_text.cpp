#include "lint/link_text.h"

#include <algorithm>

namespace quorvantis::lint {

namespace {

bool isLetter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

bool isBlankOrControl(char c) {
  return (c >= '\0' && c <= ' ') || c == '\x7F';
}

bool isScheme(std::string_view text) {
  return !text.empty() && isLetter(text.front()) && std::all_of(text.begin(), text.end(), [](char c) {
    return isLetter(c) || isDigit(c) || c == '+' || c == '-' || c == '.';
  });
}

bool isWeb(std::string_view scheme) {
  constexpr std::string_view kHTTP = "http";
  const auto isSameLetter = [](char a, char b) { return (a | 0x20) == b; };
  if (scheme.size() == kHTTP.size() + 1 && (scheme.back() | 0x20) == 's') scheme.remove_suffix(1);
  return std::equal(scheme.begin(), scheme.end(), kHTTP.begin(), kHTTP.end(), isSameLetter);
}

/// Whether the colon parts a host and its port, as in "www.example.com:8080/x". A scheme may hold dots too,
/// and digits may follow it ("tel:112"), but hardly both.
bool isHostWithPort(std::string_view beforeColon, std::string_view rest) {
  const std::string_view port = rest.substr(0, rest.find_first_of("/?#"));
  return (beforeColon.find('.') != std::string_view::npos || beforeColon == "localhost") && !port.empty() &&
         std::all_of(port.begin(), port.end(), isDigit);
}

/// The host of what follows "//", without user information and port.
std::string_view hostIn(std::string_view afterSlashes) {
  std::string_view authority = afterSlashes.substr(0, afterSlashes.find_first_of("/?#"));
  authority.remove_prefix(authority.rfind('@') + 1);  // npos + 1 is 0
  return authority.substr(0, authority.find(':'));
}

}  // namespace

std::string problemOfLink(std::string_view text) {
  if (text.empty()) return "it is empty";
  if (isBlankOrControl(text.front()) || isBlankOrControl(text.back())) {
    return "a blank or a control character stands at its end or its beginning";
  }
  const std::size_t colon = text.find(':');
  const std::string_view scheme = text.substr(0, colon);
  const std::string_view rest = colon == std::string_view::npos ? "" : text.substr(colon + 1);
  if (colon == std::string_view::npos || !isScheme(scheme) || isHostWithPort(scheme, rest)) {
    return "it does not begin with a scheme, such as https:";
  }
  if (rest.empty()) return "nothing follows the scheme";
  if (!isWeb(scheme)) return {};
  if (!rest.starts_with("//")) return "\"//\" and a host are missing";
  const std::string_view host = hostIn(rest.substr(2));
  if (host.empty()) return "its host is missing";
  const bool isBroken = std::any_of(host.begin(), host.end(), isBlankOrControl);
  return isBroken ? "a blank or a control character stands in its host" : "";
}

}  // namespace quorvantis::lint
