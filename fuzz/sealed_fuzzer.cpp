// Encrypted bodies that were forged, or changed in transit.
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/check.h"
#include "jose/jwe.h"

namespace {

constexpr std::string_view kKey = "0123456789abcdef0123456789ABCDEF";
constexpr std::size_t kAuthenticatingBytes = 16;  // of the key; the rest deciphers

using namespace quorvantis;

/// Decrypting gives the encrypted text, and fails with another key or with a changed body.
void sealAndAlter(std::string_view body, std::size_t place, char replacement) {
  std::string sealed = jose::seal(body, kKey);
  fuzz::check(jose::open(sealed, kKey) == body, "what was sealed opens");

  std::string otherKey(kKey);
  otherKey[place % kAuthenticatingBytes] ^= 0x01;
  fuzz::check(!jose::open(sealed, otherKey), "another key opens nothing");

  place %= sealed.size();
  fuzz::check(!jose::open(std::string_view(sealed).substr(0, place), kKey), "a part opens nothing");
  fuzz::check(!jose::open(std::string(sealed).insert(place, 1, replacement), kKey), "more opens nothing");
  if (sealed[place] == replacement) return;
  sealed[place] = replacement;
  fuzz::check(!jose::open(sealed, kKey), "an altered text opens nothing");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  // Without the key nothing can be encrypted; one of the seeds is.
  if (const auto body = jose::open(text, kKey)) {
    fuzz::check(jose::open(jose::seal(*body, kKey), kKey) == body, "what opened can be sealed again");
  }
  if (size < 3) return 0;
  sealAndAlter(text.substr(3), static_cast<std::size_t>(data[0]) * 256 + data[1], static_cast<char>(data[2]));
  return 0;
}
