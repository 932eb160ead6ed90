#include "bench/loopback.h"

#include <curl/curl.h>

#include <stdexcept>

#include "jose/jwe.h"
#include "platform/simulated/values.h"
#include "scenario/push_service.h"

namespace quorvantis::bench {

namespace {

constexpr const char* kUrl = "https://push.quorvantis.com/apis/api_push_v3.php";

std::size_t append(char* data, std::size_t size, std::size_t count, void* into) {
  static_cast<std::string*>(into)->append(data, size * count);
  return size * count;
}

}  // namespace

Loopback& Loopback::only() {
  static Loopback loopback;
  return loopback;
}

Loopback::Loopback() : trusted_(authority_.certificate()) {
  server::PushServerOptions options;
  options.hashKey = scenario::kHashKey;
  options.responder = [this](const server::ReceivedRequest& request) -> std::optional<server::Answer> {
    lastBody_ = request.body;
    ++requests;
    if (keepRegistrations) return std::nullopt;
    return server::Answer{.body = R"({"error":"no","token":"000102030405060708090a0b0c0d0e0f"})"};
  };
  server_ = std::make_unique<server::PushServer>(authority_, std::move(options));
  target = server_->port();
  Phone::only().push.setAppHash(platform::NSString::stringWithUTF8String("5f4dcc3b5aa765d61d8327deb882cf99"));
}

void handOver(const std::string& token, bool reuseConnection) {
  Loopback& loopback = Loopback::only();
  Phone& phone = Phone::only();
  static unsigned round = 0;
  ++round;
  phone.device.network.setHost(scenario::kPushHost, {"127.0.0.1", loopback.target});
  if (!reuseConnection) {
    phone.device.network.setTrustedAuthorities(loopback.trusted() + std::string(round % 3, '\n'));
  } else if (phone.device.network.trustedAuthorities().empty()) {
    phone.device.network.setTrustedAuthorities(loopback.trusted());
  }
  phone.push.registerForRemoteNotificationsWithDeviceToken(
      platform::simulated::objectFrom(json::Data{token}).as<platform::NSData>());
  phone.settle();
  phone.forget();
}

void registerByLibrary(bool reuseConnection) {
  static unsigned round = 0;
  ++round;
  std::string token(32, '\0');
  for (std::size_t i = 0; i < sizeof round; ++i) token[i] = static_cast<char>(round >> (8 * i));
  Phone::only().host.last = nullptr;
  handOver(token, reuseConnection);
  if (!Phone::only().host.last) throw std::runtime_error("the registration brought no callback");
}

BareClient::BareClient() : easy_(curl_easy_init()), transport_(Phone::only().device.network) {
  // The second one reports a changed token, as all later ones do.
  registerByLibrary(true);
  registerByLibrary(true);
  sealed_ = jose::seal(Loopback::only().lastBody(), scenario::kHashKey);
}

BareClient::~BareClient() {
  curl_easy_cleanup(easy_);
}

void BareClient::post(bool reuseConnection) {
  const Loopback& loopback = Loopback::only();
  const std::string connect = "::127.0.0.1:" + std::to_string(loopback.target);
  curl_slist* connectTo = curl_slist_append(nullptr, connect.c_str());
  curl_slist* headers = curl_slist_append(nullptr, "Content-Type: application/jose");
  headers = curl_slist_append(headers, "Expect:");
  curl_blob trusted{const_cast<char*>(loopback.trusted().data()), loopback.trusted().size(),
                    CURL_BLOB_NOCOPY};
  std::string answer;
  curl_easy_setopt(easy_, CURLOPT_URL, kUrl);
  curl_easy_setopt(easy_, CURLOPT_CONNECT_TO, connectTo);
  curl_easy_setopt(easy_, CURLOPT_HTTP_VERSION, long{CURL_HTTP_VERSION_1_1});
  curl_easy_setopt(easy_, CURLOPT_SSLVERSION, long{CURL_SSLVERSION_TLSv1_2});
  curl_easy_setopt(easy_, CURLOPT_CAINFO_BLOB, &trusted);
  curl_easy_setopt(easy_, CURLOPT_FRESH_CONNECT, reuseConnection ? 0L : 1L);
  curl_easy_setopt(easy_, CURLOPT_SSL_SESSIONID_CACHE, reuseConnection ? 1L : 0L);
  curl_easy_setopt(easy_, CURLOPT_MAXCONNECTS, 1L);
  curl_easy_setopt(easy_, CURLOPT_HTTPHEADER, headers);
  curl_easy_setopt(easy_, CURLOPT_POSTFIELDS, sealed_.data());
  curl_easy_setopt(easy_, CURLOPT_POSTFIELDSIZE, static_cast<long>(sealed_.size()));
  curl_easy_setopt(easy_, CURLOPT_WRITEFUNCTION, append);
  curl_easy_setopt(easy_, CURLOPT_WRITEDATA, &answer);
  const CURLcode code = curl_easy_perform(easy_);
  curl_slist_free_all(headers);
  curl_slist_free_all(connectTo);
  if (code != CURLE_OK || answer.empty()) throw std::runtime_error(curl_easy_strerror(code));
}

void BareClient::postByTransport() {
  if (!transport_.post({kUrl, Loopback::only().lastBody(), scenario::kHashKey})) {
    throw std::runtime_error("the transport brought no answer");
  }
}

}  // namespace quorvantis::bench
