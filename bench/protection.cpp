// A request's body sealed, and an answer opened.
#include "bench/pairs.h"
#include "bench/plain_protection.h"
#include "jose/jwe.h"

namespace quorvantis::bench {

namespace {

const std::string kKey = "k3RtzpWQMS40218@!HVcy!KXNDPLEQ^7";

void protect(std::size_t size) {
  const std::string body(size, 'q');
  const std::string sealed = jose::seal(body, kKey);
  const std::string bytes = std::to_string(size) + " bytes";
  measure("Request sealed: " + bytes, "library",
          [body] { benchmark::DoNotOptimize(jose::seal(body, kKey)); });
  measure("Request sealed: " + bytes, "OpenSSL",
          [body] { benchmark::DoNotOptimize(sealPlainly(body, kKey)); });
  measure("Answer opened: " + bytes, "library",
          [sealed] { benchmark::DoNotOptimize(jose::open(sealed, kKey)); });
  measure("Answer opened: " + bytes, "OpenSSL",
          [sealed] { benchmark::DoNotOptimize(openPlainly(sealed, kKey)); });
}

}  // namespace

void registerProtection() {
  protect(100);
  protect(600);
}

}  // namespace quorvantis::bench
