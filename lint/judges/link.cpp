#include "lint/judges/link.h"

#include <idn2.h>

#include <algorithm>
#include <memory>

#include "base/ascii.h"
#include "base/hexadecimal.h"
#include "device/text.h"

namespace quorvantis::lint {

namespace {

bool isBlankOrControl(char c) {
  return (c >= '\0' && c <= ' ') || c == '\x7F';
}

bool isScheme(std::string_view text) {
  return !text.empty() && base::isLetter(text.front()) && std::all_of(text.begin(), text.end(), [](char c) {
    return base::isLetter(c) || base::isDigit(c) || c == '+' || c == '-' || c == '.';
  });
}

bool isWeb(std::string_view scheme) {
  const std::string name = base::lowerCase(std::string(scheme));
  return name == "http" || name == "https";
}

/// Whether the colon parts a host and its port, as in "www.example.com:8080/x". A scheme may hold dots too,
/// and digits may follow it ("tel:112"), but hardly both.
bool isHostWithPort(std::string_view beforeColon, std::string_view rest) {
  const std::string_view port = rest.substr(0, rest.find_first_of("/?#"));
  return (beforeColon.find('.') != std::string_view::npos || beforeColon == "localhost") && !port.empty() &&
         std::all_of(port.begin(), port.end(), base::isDigit);
}

/// The host of what follows "//", without user information and port.
std::string_view hostIn(std::string_view afterSlashes) {
  std::string_view authority = afterSlashes.substr(0, afterSlashes.find_first_of("/?#"));
  authority.remove_prefix(authority.rfind('@') + 1);  // npos + 1 is 0
  return authority.substr(0, authority.find(':'));
}

std::string_view hostOf(std::string_view text) {
  const std::size_t slashes = text.find("://");
  return slashes == std::string_view::npos ? "" : hostIn(text.substr(slashes + 3));
}

bool isASCII(std::string_view text) {
  return std::none_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
}

/// Whether the "%" here has its two digits.
bool isEncodedAt(std::string_view text, std::size_t percent) {
  const std::string_view digits = text.substr(percent + 1, 2);
  return digits.size() == 2 && base::bytesFromHexadecimal(digits);
}

/// A host name in its ASCII form (RFC 5891), or nothing when it has none.
std::string asciiHost(std::string_view host) {
  char* ascii = nullptr;
  const int result =
      idn2_to_ascii_8z(std::string(host).c_str(), &ascii, IDN2_NFC_INPUT | IDN2_NONTRANSITIONAL);
  const std::unique_ptr<char, decltype(&idn2_free)> owner(ascii, idn2_free);
  return result == IDN2_OK ? std::string(ascii) : std::string();
}

std::string withStrayPercentsEncoded(std::string_view text) {
  std::string encoded;
  for (std::size_t at = 0; at < text.size(); ++at) {
    encoded += text[at];
    if (text[at] == '%' && !isEncodedAt(text, at)) encoded += "25";
  }
  return encoded;
}

std::string problemOf(std::string_view text) {
  if (text.empty()) return "it is empty";
  if (isBlankOrControl(text.front()) || isBlankOrControl(text.back())) {
    return "there is a blank or a control character at its beginning or end";
  }
  const std::size_t colon = text.find(':');
  const std::string_view scheme = text.substr(0, colon);
  const std::string_view rest = colon == std::string_view::npos ? "" : text.substr(colon + 1);
  if (colon == std::string_view::npos || !isScheme(scheme) || isHostWithPort(scheme, rest)) {
    return "it does not begin with a scheme, such as https:";
  }
  if (rest.empty()) return "there is nothing after the scheme";
  if (!isWeb(scheme)) return {};
  if (!rest.starts_with("//")) return "\"//\" and a host are missing";
  const std::string_view host = hostIn(rest.substr(2));
  if (host.empty()) return "its host is missing";
  const bool isBroken = std::any_of(host.begin(), host.end(), isBlankOrControl);
  return isBroken ? "there is a blank or a control character in its host" : "";
}

}  // namespace

Link linkFrom(std::string_view text) {
  Link link;
  link.problem = problemOf(text);
  if (!link.problem.empty()) return link;

  std::string address(text);
  if (const std::string_view host = hostOf(text); isWeb(text.substr(0, text.find(':'))) && !isASCII(host)) {
    link.hasHostBeyondASCII = true;
    const std::string ascii = asciiHost(host);
    if (ascii.empty()) return link;
    address.replace(static_cast<std::size_t>(host.data() - text.data()), host.size(), ascii);
  }
  for (std::size_t at = text.find('%'); at != std::string_view::npos; at = text.find('%', at + 1)) {
    (isEncodedAt(text, at) ? link.hasEncoded : link.hasStrayPercent) = true;
  }
  link.hasCharactersToEncode = !device::urlFrom(address, "16.0");
  link.encoded = device::urlFrom(withStrayPercentsEncoded(address), "17.0").value_or("");
  return link;
}

}  // namespace quorvantis::lint
