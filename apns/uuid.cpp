#include "apns/uuid.h"

#include <openssl/rand.h>

#include <array>
#include <stdexcept>

#include "base/ascii.h"

namespace quorvantis::apns {
namespace {

constexpr std::string_view kForm = "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx";

bool isHexadecimal(char c) {
  return base::isDigit(c) || (base::lowerCase(c) >= 'a' && base::lowerCase(c) <= 'f');
}

}  // namespace

bool isUuid(std::string_view text) {
  if (text.size() != kForm.size()) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (kForm[i] == '-' ? text[i] != '-' : !isHexadecimal(text[i])) return false;
  }
  return true;
}

std::string makeUuid() {
  std::array<unsigned char, 16> random{};
  if (RAND_bytes(random.data(), static_cast<int>(random.size())) != 1)
    throw std::runtime_error("no random bytes");
  random[6] = static_cast<unsigned char>((random[6] & 0x0FU) | 0x40U);
  random[8] = static_cast<unsigned char>((random[8] & 0x3FU) | 0x80U);
  std::string uuid(kForm);
  std::size_t half = 0;
  for (char& c : uuid) {
    if (c == '-') continue;
    const unsigned byte = random[half / 2];
    c = "0123456789ABCDEF"[half++ % 2 == 0 ? byte >> 4U : byte & 0x0FU];
  }
  return uuid;
}

}  // namespace quorvantis::apns
