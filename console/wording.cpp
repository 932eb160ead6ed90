#include "console/wording.h"

#include <algorithm>

#include "json/utf8.h"
#include "json/write.h"

namespace quorvantis::console {

namespace {

struct KindNamer {
  std::string operator()(std::nullptr_t) const { return "null"; }
  std::string operator()(bool boolean) const { return boolean ? "true" : "false"; }
  std::string operator()(std::int64_t) const { return "a number"; }
  std::string operator()(double) const { return "a number"; }
  std::string operator()(const std::string&) const { return "a text"; }
  std::string operator()(const json::Data&) const { return "data"; }
  std::string operator()(const json::Array&) const { return "an array"; }
  std::string operator()(const json::Dictionary&) const { return "an object"; }
};

/// The bytes of the character that begins here, 0 when none does.
std::size_t characterSize(std::string_view text) {
  for (std::size_t size = 1; size <= std::min<std::size_t>(4, text.size()); ++size) {
    if (json::isUTF8(text.substr(0, size))) return size;
  }
  return 0;
}

/// Turns the order of the text around it, so that people read what is not there.
bool isBidirectionalControl(std::string_view character) {
  return (character >= "\u202A" && character <= "\u202E") || (character >= "\u2066" && character <= "\u2069");
}

bool isControl(std::string_view character) {
  const auto lead = static_cast<unsigned char>(character[0]);
  if (lead < 0x20) return character != "\n";
  const bool isC1 = lead == 0xC2 && static_cast<unsigned char>(character[1]) < 0xA0;
  return lead == 0x7F || isC1 || isBidirectionalControl(character);
}

}  // namespace

std::string kindOf(const json::Value& value) {
  return std::visit(KindNamer{}, value.variant());
}

std::string grouped(std::size_t number) {
  std::string digits = std::to_string(number);
  for (std::size_t at = digits.size(); at > 3;) {
    at -= 3;
    digits.insert(at, 1, ',');
  }
  return digits;
}

std::string counted(std::size_t number, const std::string& noun) {
  return grouped(number) + ' ' + noun + (number == 1 ? "" : "s");
}

std::string listed(std::span<const std::string_view> texts) {
  std::string list;
  for (const std::string_view text : texts) list += (list.empty() ? "" : ", ") + json::write(text);
  return list;
}

std::string shortened(std::string_view text, std::size_t longest) {
  if (text.size() <= longest) return std::string(text);
  while (longest > 0 && (static_cast<unsigned char>(text[longest]) & 0xC0U) == 0x80U) --longest;
  return std::string(text.substr(0, longest)) + "…";
}

std::string harmless(std::string_view text) {
  std::string clean;
  while (!text.empty()) {
    const std::size_t size = characterSize(text);
    if (size == 0 || isControl(text.substr(0, size))) {
      clean += "\xEF\xBF\xBD";
    } else {
      clean += text.substr(0, size);
    }
    text.remove_prefix(std::max<std::size_t>(size, 1));
  }
  return clean;
}

}  // namespace quorvantis::console
