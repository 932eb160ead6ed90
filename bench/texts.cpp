// The device token as text, and the body of a request.
#include <fmt/format.h>
#include <openssl/crypto.h>

#include <boost/algorithm/hex.hpp>
#include <cstdio>
#include <cstring>
#include <iterator>

#include "bench/pairs.h"
#include "bench/phone.h"
#include "bench/request_body.h"
#include "platform/simulated/values.h"

namespace quorvantis::bench {

namespace {

void token(std::size_t length) {
  const std::string row = "Token to text: " + std::to_string(length) + " bytes";
  std::string bytes(length, '\0');
  for (std::size_t i = 0; i < length; ++i) bytes[i] = static_cast<char>(i * 37 + 11);

  measure(row, "library", [data = platform::simulated::objectFrom(json::Data{bytes}).as<platform::NSData>()] {
    benchmark::DoNotOptimize(Phone::only().push.hexadecimalStringFromData(data));
  });
  // Each ends in the same object that the library gives.
  using platform::NSString;
  measure(row, "%02x loop", [bytes] {
    std::string text;
    for (const char byte : bytes) {
      char digits[3];
      std::snprintf(digits, sizeof digits, "%02x", static_cast<unsigned>(static_cast<unsigned char>(byte)));
      text += digits;
    }
    benchmark::DoNotOptimize(NSString::stringWithUTF8String(text));
  });
  measure(row, "OpenSSL", [bytes] {
    std::string text(2 * bytes.size() + 1, '\0');
    std::size_t written = 0;
    OPENSSL_buf2hexstr_ex(text.data(), text.size(), &written,
                          reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size(), '\0');
    benchmark::DoNotOptimize(NSString::stringWithUTF8String(std::string_view(text.data(), written - 1)));
  });
  measure(row, "Boost", [bytes] {
    std::string text;
    text.reserve(2 * bytes.size());
    boost::algorithm::hex_lower(bytes.begin(), bytes.end(), std::back_inserter(text));
    benchmark::DoNotOptimize(NSString::stringWithUTF8String(text));
  });
  measure(row, "limit", [from = std::string(2 * length, 'a')] {
    std::string text(from);
    benchmark::DoNotOptimize(text.data());
  });
}

void body() {
  const std::string row = "Request body, settings read";
  measure(row, "library", [] { benchmark::DoNotOptimize(bodyByLibrary()); });
  measure(row, "fmt, values at hand", [values = storedTexts(), token = tokenText()] {
    benchmark::DoNotOptimize(
        fmt::format("&tarea={}&token={}&jsonApp={}&jsonDevice={}&jsonLibreria={}&jsonGeo={}",
                    "pushlibRegistrarToken", token, values.app, values.device, values.library, values.geo));
  });
  measure(row, "limit", [text = std::string(bodyText())] {
    std::string copy(text);
    benchmark::DoNotOptimize(copy.data());
  });
}

}  // namespace

void registerTexts() {
  token(32);
  token(160);
  body();
}

}  // namespace quorvantis::bench
