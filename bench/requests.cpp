// A whole registration over loopback HTTPS, from the token to the host's callback, and its request alone.
#include "bench/loopback.h"
#include "bench/pairs.h"

namespace quorvantis::bench {

namespace {

BareClient& client() {
  static BareClient client;
  return client;
}

}  // namespace

void registerRequests() {
  for (const bool reuse : {true, false}) {
    const std::string row =
        std::string("Registration over HTTPS, ") + (reuse ? "connection reused" : "connection new");
    measureWaiting(row, "library", [reuse] { registerByLibrary(reuse); });
    measureWaiting(row, "libcurl", [reuse] { client().post(reuse); });
  }
  const std::string row = "Registration's request alone, sealed and posted, connection reused";
  measureWaiting(row, "library", [] { client().postByTransport(); });
  measureWaiting(row, "libcurl", [] { client().post(true); });
}

}  // namespace quorvantis::bench
