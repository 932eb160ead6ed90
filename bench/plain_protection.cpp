#include "bench/plain_protection.h"

#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/hmac.h>
#include <openssl/rand.h>

#include <algorithm>
#include <array>
#include <memory>

namespace quorvantis::bench {

namespace {

constexpr std::size_t kHalf = 16;

const unsigned char* bytes(std::string_view text) {
  return reinterpret_cast<const unsigned char*>(text.data());
}
unsigned char* bytes(std::string& text) {
  return reinterpret_cast<unsigned char*>(text.data());
}

std::string encode(std::string_view data) {
  std::string text((data.size() + 2) / 3 * 4 + 1, '\0');
  const int length = EVP_EncodeBlock(bytes(text), bytes(data), static_cast<int>(data.size()));
  text.resize(static_cast<std::size_t>(length));
  while (!text.empty() && text.back() == '=') text.pop_back();
  std::replace(text.begin(), text.end(), '+', '-');
  std::replace(text.begin(), text.end(), '/', '_');
  return text;
}

std::string decode(std::string_view part) {
  std::string text(part);
  std::replace(text.begin(), text.end(), '-', '+');
  std::replace(text.begin(), text.end(), '_', '/');
  const std::size_t padding = (4 - text.size() % 4) % 4;
  text.append(padding, '=');
  std::string data(text.size() / 4 * 3, '\0');
  EVP_DecodeBlock(bytes(data), bytes(text), static_cast<int>(text.size()));
  data.resize(data.size() - padding);
  return data;
}

std::string tagOf(std::string_view header, std::string_view vector, std::string_view ciphertext,
                  std::string_view key) {
  std::string input;
  input.append(header).append(vector).append(ciphertext);
  for (int shift = 56; shift >= 0; shift -= 8) input += static_cast<char>(header.size() * 8 >> shift);
  std::array<unsigned char, EVP_MAX_MD_SIZE> digest;
  HMAC(EVP_sha256(), key.data(), kHalf, bytes(input), input.size(), digest.data(), nullptr);
  return {reinterpret_cast<const char*>(digest.data()), kHalf};
}

std::string cipher(bool encrypting, std::string_view text, std::string_view vector, std::string_view key) {
  const std::unique_ptr<EVP_CIPHER_CTX, decltype(&EVP_CIPHER_CTX_free)> context(EVP_CIPHER_CTX_new(),
                                                                                EVP_CIPHER_CTX_free);
  EVP_CipherInit_ex(context.get(), EVP_aes_128_cbc(), nullptr, bytes(key.substr(kHalf)), bytes(vector),
                    encrypting ? 1 : 0);
  std::string result(text.size() + kHalf, '\0');
  int written = 0;
  int last = 0;
  EVP_CipherUpdate(context.get(), bytes(result), &written, bytes(text), static_cast<int>(text.size()));
  EVP_CipherFinal_ex(context.get(), bytes(result) + written, &last);
  result.resize(static_cast<std::size_t>(written + last));
  return result;
}

}  // namespace

std::string sealPlainly(std::string_view body, std::string_view key) {
  static const std::string header = encode(R"({"alg":"dir","enc":"A128CBC-HS256"})");
  std::string vector(kHalf, '\0');
  RAND_bytes(bytes(vector), static_cast<int>(kHalf));
  const std::string ciphertext = cipher(true, body, vector, key);
  return header + ".." + encode(vector) + "." + encode(ciphertext) + "." +
         encode(tagOf(header, vector, ciphertext, key));
}

std::string openPlainly(std::string_view sealed, std::string_view key) {
  std::array<std::string_view, 5> parts;
  for (std::string_view& part : parts) {
    part = sealed.substr(0, sealed.find('.'));
    sealed.remove_prefix(std::min(part.size() + 1, sealed.size()));
  }
  const std::string vector = decode(parts[2]);
  const std::string ciphertext = decode(parts[3]);
  const std::string tag = decode(parts[4]);
  const std::string expected = tagOf(parts[0], vector, ciphertext, key);
  if (CRYPTO_memcmp(tag.data(), expected.data(), kHalf) != 0) return {};
  return cipher(false, ciphertext, vector, key);
}

}  // namespace quorvantis::bench
