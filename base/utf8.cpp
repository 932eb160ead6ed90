#include "base/utf8.h"

#include <cstddef>

namespace quorvantis::base {

namespace {

/// The length of the character that begins here and the character itself; 0 bytes when none does.
struct Character {
  std::size_t size = 0;
  char32_t point = 0;
};

Character characterAt(std::string_view bytes) {
  const auto lead = static_cast<unsigned char>(bytes.front());
  Character character{1, lead};
  char32_t least = 0;
  if (lead >= 0xF0 && lead <= 0xF4) {
    character = {4, lead & 0x07U}, least = 0x10000;
  } else if (lead >= 0xE0 && lead < 0xF0) {
    character = {3, lead & 0x0FU}, least = 0x800;
  } else if (lead >= 0xC2 && lead < 0xE0) {
    character = {2, lead & 0x1FU}, least = 0x80;
  } else if (lead >= 0x80) {
    return {};
  }
  if (bytes.size() < character.size) return {};
  for (const char next : bytes.substr(1, character.size - 1)) {
    if (!isContinuation(next)) return {};
    character.point = character.point << 6 | (static_cast<unsigned char>(next) & 0x3FU);
  }
  const bool isSurrogate = character.point >= 0xD800 && character.point <= 0xDFFF;
  if (character.point < least || character.point > 0x10FFFF || isSurrogate) return {};
  return character;
}

}  // namespace

bool isUTF8(std::string_view bytes) {
  while (!bytes.empty()) {
    if (!takeCharacter(bytes)) return false;
  }
  return true;
}

std::optional<char32_t> takeCharacter(std::string_view& bytes) {
  const Character character = characterAt(bytes);
  if (character.size == 0) {
    bytes.remove_prefix(1);
    return std::nullopt;
  }
  bytes.remove_prefix(character.size);
  return character.point;
}

}  // namespace quorvantis::base
