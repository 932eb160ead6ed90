// A provider token, as in a request's header.
#include <cstdint>
#include <string>

#include "apns/provider_token.h"
#include "fuzz/check.h"
#include "jose/base64url.h"
#include "jose/jws.h"

namespace {

using namespace quorvantis;

/// The public half of a key that has signed nothing.
const jose::SigningKey& key() {
  static const jose::SigningKey kKey(
      "-----BEGIN PUBLIC KEY-----\n"
      "MFkwEwYHKoZIzj0CAQYIKoZIzj0DAQcDQgAE7hN7kfDt/OBdCRnVEY+tDgJeZMKu\n"
      "bQVRjfdAPOCLeJ6HckyGOqr3+oYy2K0iJ9eGIuJs4dsWgoP1v35u8N/oKg==\n"
      "-----END PUBLIC KEY-----\n");
  return kKey;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  const auto bearer = apns::bearerIn(text);
  const std::string token(bearer.value_or(text));
  const auto decoded = jose::decodeBase64url(token);
  fuzz::check(decoded.has_value() == jose::decodedSize(token).has_value() &&
                  (!decoded || decoded->size() == *jose::decodedSize(token)),
              "the predicted size is the actual size");
  const auto read = apns::readProviderToken(token);
  fuzz::check(!read || (read->keyId.size() == 10 && read->team.size() == 10 && read->issuedAt >= 0),
              "what is read has its form");
  if (read) fuzz::check(!key().hasSigned(token), "nobody has signed it");
  return 0;
}
