#include "apns/uuid.h"

#include <array>
#include <cstdint>
#include <random>

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
  // Not secret, and made for each request, of whose cost a cryptographic source would be a quarter.
  thread_local std::mt19937_64 source = [] {
    std::random_device device;
    std::seed_seq seed{device(), device(), device(), device(), device(), device(), device(), device()};
    return std::mt19937_64(seed);
  }();
  std::array<std::uint64_t, 2> halves = {source(), source()};
  halves[0] = (halves[0] & ~0xF000ULL) | 0x4000ULL;
  halves[1] = (halves[1] & ~(0xC0ULL << 56U)) | (0x80ULL << 56U);
  std::string uuid(kForm);
  unsigned digit = 0;
  for (char& c : uuid) {
    if (c == '-') continue;
    c = "0123456789ABCDEF"[halves[digit / 16] >> (60 - digit % 16 * 4) & 0xFU];
    ++digit;
  }
  return uuid;
}

}  // namespace quorvantis::apns
