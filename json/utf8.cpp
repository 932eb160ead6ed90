#include "json/utf8.h"

#include <cstdint>

namespace quorvantis::json {

bool isUTF8(std::string_view bytes) {
  std::size_t i = 0;
  while (i < bytes.size()) {
    const auto lead = static_cast<unsigned char>(bytes[i]);
    std::size_t length = 1;
    std::uint32_t point = lead;
    std::uint32_t least = 0;
    if (lead >= 0xF0 && lead <= 0xF4) {
      length = 4, point = lead & 0x07U, least = 0x10000;
    } else if (lead >= 0xE0 && lead < 0xF0) {
      length = 3, point = lead & 0x0FU, least = 0x800;
    } else if (lead >= 0xC2 && lead < 0xE0) {
      length = 2, point = lead & 0x1FU, least = 0x80;
    } else if (lead >= 0x80) {
      return false;
    }
    if (bytes.size() - i < length) return false;
    for (std::size_t k = 1; k < length; ++k) {
      const auto next = static_cast<unsigned char>(bytes[i + k]);
      if ((next & 0xC0U) != 0x80) return false;
      point = point << 6 | (next & 0x3FU);
    }
    const bool isSurrogate = point >= 0xD800 && point <= 0xDFFF;
    if (point < least || point > 0x10FFFF || isSurrogate) return false;
    i += length;
  }
  return true;
}

}  // namespace quorvantis::json
