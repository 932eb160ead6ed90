#include "console/wording.h"

#include <vector>

#include "base/utf8.h"
#include "json/write.h"

namespace quorvantis::console {

namespace {

struct KindNamer {
  std::string operator()(std::nullptr_t) const { return "null"; }
  std::string operator()(bool boolean) const { return boolean ? "true" : "false"; }
  std::string operator()(std::int64_t) const { return "a number"; }
  std::string operator()(std::uint64_t) const { return "a number"; }
  std::string operator()(double) const { return "a number"; }
  std::string operator()(const std::string&) const { return "a string"; }
  std::string operator()(const json::Data&) const { return "data"; }
  std::string operator()(const json::Array&) const { return "an array"; }
  std::string operator()(const json::Dictionary&) const { return "an object"; }
};

/// Changes the displayed order of the text around it, which can be used to deceive.
bool isBidirectionalControl(char32_t character) {
  return (character >= U'\u202A' && character <= U'\u202E') ||
         (character >= U'\u2066' && character <= U'\u2069');
}

bool isControl(char32_t character) {
  const bool isC0 = character < 0x20 && character != U'\n';
  const bool isC1 = character >= 0x7F && character < 0xA0;
  return isC0 || isC1 || isBidirectionalControl(character);
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

std::string joined(std::span<const std::string> texts, std::string_view beforeLast) {
  std::string list;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (i != 0) list += i + 1 == texts.size() ? beforeLast : ", ";
    list += texts[i];
  }
  return list;
}

std::string listed(std::span<const std::string_view> texts, std::string_view beforeLast) {
  std::vector<std::string> quoted;
  for (const std::string_view text : texts) quoted.push_back(json::write(text));
  return joined(quoted, beforeLast);
}

std::string shortened(std::string_view text, std::size_t longest) {
  if (text.size() <= longest) return std::string(text);
  while (longest > 0 && base::isContinuation(text[longest])) --longest;
  return std::string(text.substr(0, longest)) + "…";
}

std::string printable(std::string_view text) {
  std::string clean;
  while (!text.empty()) {
    std::string_view rest = text;
    const auto character = base::takeCharacter(rest);
    const bool isShown = character && !isControl(*character);
    clean += isShown ? text.substr(0, text.size() - rest.size()) : "\uFFFD";
    text = rest;
  }
  return clean;
}

}  // namespace quorvantis::console
