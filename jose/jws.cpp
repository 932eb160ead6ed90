#include "jose/jws.h"

#include <cjose/header.h>
#include <cjose/jwk.h>
#include <cjose/jws.h>
#include <openssl/bio.h>
#include <openssl/core_names.h>
#include <openssl/evp.h>
#include <openssl/pem.h>

#include <array>
#include <cstring>
#include <stdexcept>

#include "base/c_handle.h"

namespace quorvantis::jose {
namespace {

constexpr std::size_t kCoordinateBytes = 32;

using Bio = base::CHandle<BIO, BIO_free_all>;
using PKey = base::CHandle<EVP_PKEY, EVP_PKEY_free>;
using Jwk = base::CHandle<cjose_jwk_t, cjose_jwk_release>;
using Jws = base::CHandle<cjose_jws_t, cjose_jws_release>;

/// Never asks for a password.
int noPassword(char*, int, int, void*) {
  return -1;
}

PKey readKey(const std::string& pem) {
  const auto memory = [&] { return Bio(BIO_new_mem_buf(pem.data(), static_cast<int>(pem.size()))); };
  PKey key(PEM_read_bio_PrivateKey(memory().get(), nullptr, noPassword, nullptr));
  if (!key) key.reset(PEM_read_bio_PUBKEY(memory().get(), nullptr, noPassword, nullptr));
  if (!key) throw std::runtime_error("not a key in PEM form without a password");
  return key;
}

bool isOnP256(const EVP_PKEY* key) {
  std::array<char, 64> group{};
  return EVP_PKEY_is_a(key, "EC") == 1 &&
         EVP_PKEY_get_group_name(key, group.data(), group.size(), nullptr) == 1 &&
         std::strcmp(group.data(), "prime256v1") == 0;
}

Jwk publicHalf(const EVP_PKEY* key) {
  // 4, x, y
  std::array<unsigned char, 1 + 2 * kCoordinateBytes> point{};
  std::size_t size = 0;
  if (!isOnP256(key) ||
      EVP_PKEY_get_octet_string_param(key, OSSL_PKEY_PARAM_PUB_KEY, point.data(), point.size(), &size) != 1 ||
      size != point.size() || point[0] != 4) {
    throw std::runtime_error("not a key on the curve P-256");
  }
  cjose_jwk_ec_keyspec spec{};
  spec.crv = CJOSE_JWK_EC_P_256;
  spec.x = point.data() + 1;
  spec.xlen = kCoordinateBytes;
  spec.y = point.data() + 1 + kCoordinateBytes;
  spec.ylen = kCoordinateBytes;
  Jwk made(cjose_jwk_create_EC_spec(&spec, nullptr));
  if (!made) throw std::runtime_error("not a key that can be used");
  return made;
}

/// cjose would use whatever algorithm the header names.
bool isES256(cjose_jws_t* token) {
  const char* algorithm = cjose_header_get(cjose_jws_get_protected(token), CJOSE_HDR_ALG, nullptr);
  return algorithm != nullptr && std::strcmp(algorithm, CJOSE_HDR_ALG_ES256) == 0;
}

}  // namespace

struct SigningKey::State {
  Jwk key;
};

SigningKey::SigningKey(const std::string& pem)
    : state_(std::make_unique<State>(State{publicHalf(readKey(pem).get())})) {}
SigningKey::~SigningKey() = default;

bool SigningKey::hasSigned(std::string_view token) const {
  const Jws read(cjose_jws_import(token.data(), token.size(), nullptr));
  return read && isES256(read.get()) && cjose_jws_verify(read.get(), state_->key.get(), nullptr);
}

}  // namespace quorvantis::jose
