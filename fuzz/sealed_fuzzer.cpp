// Sealed bodies as a stranger writes them, and as one alters them on their way.
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/check.h"
#include "jose/jwe.h"

namespace {

constexpr std::string_view kKey = "0123456789abcdef0123456789ABCDEF";
constexpr std::size_t kAuthenticatingBytes = 16;  // of the key; the rest deciphers

using namespace quorvantis;

/// What opens is what was sealed, and no other text opens: not with another key, not altered in one place.
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
  // Only who has the key seals; of the seeds one is sealed with it.
  if (const auto body = jose::open(text, kKey)) {
    fuzz::check(jose::open(jose::seal(*body, kKey), kKey) == body, "what opened can be sealed again");
  }
  if (size < 3) return 0;
  sealAndAlter(text.substr(3), static_cast<std::size_t>(data[0]) * 256 + data[1], static_cast<char>(data[2]));
  return 0;
}
