#include "jose/jwe.h"

#include <gtest/gtest.h>
#include <openssl/evp.h>
#include <openssl/hmac.h>

#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace quorvantis::jose {
namespace {

const std::string kKey = "0123456789abcdefghijklmnopqrstuv";
const std::string kBody = "&tarea=pushlibRegistrarToken&token=0a1b&jsonApp=[1]&jsonGeo={}";

std::string base64url(std::string_view bytes) {
  constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_";
  std::string text;
  unsigned bits = 0;
  int count = 0;
  for (const char byte : bytes) {
    bits = (bits << 8) | static_cast<unsigned char>(byte);
    for (count += 8; count >= 6; count -= 6) text += kDigits[(bits >> (count - 6)) & 63];
  }
  if (count > 0) text += kDigits[(bits << (6 - count)) & 63];
  return text;
}

std::vector<std::string> parts(const std::string& sealed) {
  std::vector<std::string> found(1);
  for (const char character : sealed) {
    if (character == '.') {
      found.emplace_back();
    } else {
      found.back() += character;
    }
  }
  return found;
}

std::string joined(const std::vector<std::string>& all) {
  std::string text;
  for (const auto& part : all) text += (&part == all.data() ? "" : ".") + part;
  return text;
}

/// Seals by hand, with any header (RFC 7518, section 5.2.2), so that only the header can be what is wrong.
std::string sealedUnder(const std::string& header) {
  const auto* key = reinterpret_cast<const unsigned char*>(kKey.data());
  const std::string vector(16, 'v');
  std::string ciphertext(kBody.size() + 16, '\0');
  auto* out = reinterpret_cast<unsigned char*>(ciphertext.data());
  int size = 0;
  int last = 0;
  EVP_CIPHER_CTX* cipher = EVP_CIPHER_CTX_new();
  EVP_EncryptInit_ex(cipher, EVP_aes_128_cbc(), nullptr, key + 16,
                     reinterpret_cast<const unsigned char*>(vector.data()));
  EVP_EncryptUpdate(cipher, out, &size, reinterpret_cast<const unsigned char*>(kBody.data()),
                    static_cast<int>(kBody.size()));
  EVP_EncryptFinal_ex(cipher, out + size, &last);
  EVP_CIPHER_CTX_free(cipher);
  ciphertext.resize(static_cast<std::size_t>(size) + static_cast<std::size_t>(last));

  const std::string aad = base64url(header);
  std::string authenticated = aad + vector + ciphertext;
  for (int shift = 56; shift >= 0; shift -= 8) {
    authenticated += static_cast<char>(std::uint64_t{aad.size() * 8} >> shift);
  }
  std::string tag(32, '\0');
  HMAC(EVP_sha256(), key, 16, reinterpret_cast<const unsigned char*>(authenticated.data()),
       authenticated.size(), reinterpret_cast<unsigned char*>(tag.data()), nullptr);
  return joined({aad, "", base64url(vector), base64url(ciphertext), base64url(tag.substr(0, 16))});
}

TEST(Jwe, OpensWhatItSealed) {
  std::string binary;
  for (int i = 0; i < 70'000; ++i) binary += static_cast<char>(i * 7);
  for (const std::string& body : {std::string(), std::string("x"), std::string(15, 'a'), std::string(16, 'a'),
                                  std::string(17, 'a'), kBody, binary}) {
    const std::string sealed = seal(body, kKey);
    EXPECT_EQ(open(sealed, kKey), body);
    EXPECT_EQ(open(sealed, std::string(32, 'k')), std::nullopt);
  }
  EXPECT_EQ(open(seal({}, kKey), kKey), "");
}

TEST(Jwe, SealsTheSameBodyDifferentlyEachTime) {
  std::set<std::string> vectors;
  for (int i = 0; i < 20; ++i) vectors.insert(parts(seal(kBody, kKey)).at(2));
  EXPECT_EQ(vectors.size(), 20U);
}

TEST(Jwe, AcceptsOnlyKeysOf32Bytes) {
  for (const std::size_t size : {0U, 16U, 31U, 33U, 64U}) {
    EXPECT_THROW(seal(kBody, std::string(size, 'k')), std::invalid_argument);
    EXPECT_EQ(open(seal(kBody, kKey), std::string(size, 'k')), std::nullopt);
  }
}

TEST(Jwe, AcceptsOnlyOneHeader) {
  for (const char* header : {R"({"alg":"dir","enc":"A128CBC-HS256"})",
                             R"({ "enc":"A128CBC-HS256", "kid":"k", "cty":"c", "alg":"dir" })"}) {
    EXPECT_EQ(open(sealedUnder(header), kKey), kBody) << header;
  }
  for (const char* header :
       {R"({"alg":"A256KW","enc":"A128CBC-HS256"})", R"({"alg":"none","enc":"A128CBC-HS256"})",
        R"({"alg":"dir","enc":"A256GCM"})", R"({"alg":"dir"})", R"({"enc":"A128CBC-HS256"})",
        R"({"alg":"dir","enc":"A128CBC-HS256","zip":"DEF"})", R"({"alg":["dir"],"enc":"A128CBC-HS256"})",
        R"({"alg":"dir","enc":"A128CBC-HS256","crit":["exp"]})",
        R"({"alg":"none","alg":"dir","enc":"A128CBC-HS256"})", "[]", "{", "", "\xFF"}) {
    EXPECT_EQ(open(sealedUnder(header), kKey), std::nullopt) << header;
  }
}

TEST(Jwe, AcceptsOnlyFiveParts) {
  auto good = parts(seal(kBody, kKey));
  EXPECT_EQ(open(joined(good) + ".", kKey), std::nullopt);
  EXPECT_EQ(open(joined({good[0], good[1], good[2], good[3]}), kKey), std::nullopt);
  good[1] = "AAAA";
  EXPECT_EQ(open(joined(good), kKey), std::nullopt);
}

TEST(Jwe, RefusesWhatWasTamperedWith) {
  const auto good = parts(seal(kBody, kKey));
  for (std::size_t index = 0; index < good.size(); ++index) {
    for (std::size_t at = 0; at < good[index].size(); ++at) {
      auto copy = good;
      copy[index][at] = copy[index][at] == 'A' ? 'B' : 'A';
      ASSERT_EQ(open(joined(copy), kKey), std::nullopt) << index << " " << at;
      copy = good;
      copy[index].erase(at);
      ASSERT_EQ(open(joined(copy), kKey), std::nullopt) << index << " " << at;
    }
  }
  // Another writing of the same bytes.
  auto copy = good;
  copy[4] += "=";
  EXPECT_EQ(open(joined(copy), kKey), std::nullopt);
  copy[4] = good[4];
  ++copy[4].back();
  EXPECT_EQ(open(joined(copy), kKey), std::nullopt);
}

TEST(Jwe, SurvivesGarbage) {
  std::mt19937 random(7);
  const std::string sealed = seal(kBody, kKey);
  for (int i = 0; i < 3000; ++i) {
    std::string garbage = i % 2 == 0 ? sealed : std::string(random() % 200, '.');
    for (char& character : garbage) {
      if (random() % 8 == 0) character = static_cast<char>(random());
    }
    if (garbage == sealed) continue;
    ASSERT_EQ(open(garbage, kKey), std::nullopt);
  }
  for (const char* unit : {".", "A", "[", "\0"}) {
    EXPECT_EQ(open(std::string(2'000'000, *unit), kKey), std::nullopt);
    EXPECT_EQ(open(base64url(std::string(200'000, *unit)) + joined({"", "", "AAAA", "AAAA", "AAAA"}), kKey),
              std::nullopt);
  }
  EXPECT_EQ(open({}, kKey), std::nullopt);
}

}  // namespace
}  // namespace quorvantis::jose
