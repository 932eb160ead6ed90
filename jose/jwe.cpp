#include "jose/jwe.h"

#include <cjose/header.h>
#include <cjose/jwe.h>
#include <cjose/jwk.h>
#include <cjose/util.h>
#include <jansson.h>

#include <array>
#include <cstdint>
#include <stdexcept>

#include "base/c_handle.h"
#include "jose/base64url.h"

namespace quorvantis::jose {
namespace {

constexpr std::size_t kKeyBytes = 32;
/// {"alg":"dir","enc":"A128CBC-HS256"}
constexpr std::string_view kUsualHeader = "eyJhbGciOiJkaXIiLCJlbmMiOiJBMTI4Q0JDLUhTMjU2In0";
constexpr std::size_t kBlockBytes = 16;  // of the cipher; the initialization vector and the tag are as long

struct Deallocator {
  void operator()(void* memory) const { cjose_get_dealloc()(memory); }
};

using Key = base::CHandle<cjose_jwk_t, cjose_jwk_release>;
using Header = base::CHandle<cjose_header_t, cjose_header_release>;
using Jwe = base::CHandle<cjose_jwe_t, cjose_jwe_release>;
using Json = base::CHandle<json_t, json_decref>;
using Bytes = std::unique_ptr<std::uint8_t, Deallocator>;
using Text = std::unique_ptr<char, Deallocator>;

const std::uint8_t* bytes(std::string_view text) {
  return reinterpret_cast<const std::uint8_t*>(text.data());
}

Key contentKey(std::string_view key) {
  if (key.size() != kKeyBytes) throw std::invalid_argument("the hash key must have 32 bytes");
  Key made(cjose_jwk_create_oct_spec(bytes(key), key.size(), nullptr));
  if (!made) throw std::runtime_error("the hash key can't be used");
  return made;
}

/// header, encrypted key, initialization vector, ciphertext, tag
using Parts = std::array<std::string_view, 5>;

std::optional<Parts> split(std::string_view sealed) {
  Parts parts;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const std::size_t dot = sealed.find('.');
    if ((dot == std::string_view::npos) != (i + 1 == parts.size())) return std::nullopt;
    parts[i] = sealed.substr(0, dot);
    if (dot != std::string_view::npos) sealed.remove_prefix(dot + 1);
  }
  return parts;
}

bool isText(const json_t* value, const char* expected) {
  return json_is_string(value) &&
         std::string_view(json_string_value(value), json_string_length(value)) == expected;
}

/// cjose would accept any algorithm that it supports.
bool isOurHeader(std::string_view part) {
  if (part == kUsualHeader) return true;
  const auto decoded = decodeBase64url(part);
  if (!decoded) return false;
  const Json header(json_loadb(decoded->data(), decoded->size(), JSON_REJECT_DUPLICATES, nullptr));
  return json_is_object(header.get()) && isText(json_object_get(header.get(), "alg"), CJOSE_HDR_ALG_DIR) &&
         isText(json_object_get(header.get(), "enc"), CJOSE_HDR_ENC_A128CBC_HS256) &&
         json_object_get(header.get(), "crit") == nullptr && json_object_get(header.get(), "zip") == nullptr;
}

/// cjose does not check the parts' sizes.
bool isWellFormed(std::string_view sealed) {
  const auto parts = split(sealed);
  if (!parts) return false;
  const auto& [header, encryptedKey, vector, ciphertext, tag] = *parts;
  const auto ciphertextBytes = decodedSize(ciphertext);
  return decodedSize(header).value_or(0) > 0 && encryptedKey.empty() && decodedSize(vector) == kBlockBytes &&
         decodedSize(tag) == kBlockBytes && ciphertextBytes.value_or(0) > 0 &&
         *ciphertextBytes % kBlockBytes == 0 && isOurHeader(header);
}

}  // namespace

std::string seal(std::string_view body, std::string_view key) {
  const Key content = contentKey(key);
  const Header header(cjose_header_new(nullptr));
  if (!header || !cjose_header_set(header.get(), CJOSE_HDR_ALG, CJOSE_HDR_ALG_DIR, nullptr) ||
      !cjose_header_set(header.get(), CJOSE_HDR_ENC, CJOSE_HDR_ENC_A128CBC_HS256, nullptr)) {
    throw std::runtime_error("the encryption header can't be created");
  }
  if (body.empty()) body = "";  // never a null pointer
  const Jwe jwe(cjose_jwe_encrypt(content.get(), header.get(), bytes(body), body.size(), nullptr));
  const Text compact(jwe ? cjose_jwe_export(jwe.get(), nullptr) : nullptr);
  if (!compact) throw std::runtime_error("the body can't be encrypted");
  return compact.get();
}

std::optional<std::string> open(std::string_view sealed, std::string_view key) {
  if (key.size() != kKeyBytes || !isWellFormed(sealed)) return std::nullopt;
  const Key content = contentKey(key);
  const Jwe jwe(cjose_jwe_import(sealed.data(), sealed.size(), nullptr));
  if (!jwe) return std::nullopt;
  std::size_t size = 0;
  const Bytes body(cjose_jwe_decrypt(jwe.get(), content.get(), &size, nullptr));
  if (!body) return std::nullopt;
  return std::string(reinterpret_cast<const char*>(body.get()), size);
}

}  // namespace quorvantis::jose
