#include "device/transport.h"

#include <arpa/inet.h>
#include <curl/curl.h>
#include <openssl/ssl.h>
#include <poll.h>

#include <algorithm>
#include <cstring>
#include <exception>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "base/c_handle.h"
#include "jose/jwe.h"

namespace quorvantis::device {
namespace {

constexpr std::size_t kMostHeaderBytes = std::size_t{64} * 1024;

using Easy = base::CHandle<CURL, curl_easy_cleanup>;
using Multi = base::CHandle<CURLM, curl_multi_cleanup>;
using Url = base::CHandle<CURLU, curl_url_cleanup>;
using Text = base::CHandle<char, curl_free>;
using Headers = base::CHandle<curl_slist, curl_slist_free_all>;

/// Why a request failed. Caught within the transport.
class Failure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

void startLibcurl() {
  static std::once_flag once;
  std::call_once(once, [] {
    if (curl_global_init(CURL_GLOBAL_DEFAULT) != CURLE_OK) throw std::runtime_error("libcurl does not start");
  });
}

struct Target {
  Url url;
  Endpoint endpoint;
};

Target locate(const std::string& text, const Network& network) {
  Target target{Url(curl_url()), {}};
  char* found = nullptr;
  if (!target.url || curl_url_set(target.url.get(), CURLUPART_URL, text.c_str(), 0) != CURLUE_OK ||
      curl_url_get(target.url.get(), CURLUPART_HOST, &found, 0) != CURLUE_OK) {
    throw Failure("not a URL");
  }
  const Text host(found);
  // A user name and a password would become a header.
  curl_url_set(target.url.get(), CURLUPART_USER, nullptr, 0);
  curl_url_set(target.url.get(), CURLUPART_PASSWORD, nullptr, 0);
  const auto endpoint = network.resolve(host.get());
  if (!endpoint) throw Failure("unknown host");
  target.endpoint = *endpoint;
  return target;
}

/// libcurl's "connect to" entry for any host. Only numeric, so that no name is ever looked up.
std::string connectTo(const Endpoint& endpoint) {
  in6_addr parsed;
  const bool v4 = inet_pton(AF_INET, endpoint.address.c_str(), &parsed) == 1;
  if (!v4 && inet_pton(AF_INET6, endpoint.address.c_str(), &parsed) != 1)
    throw Failure("not a numeric address");
  return "::" + (v4 ? endpoint.address : "[" + endpoint.address + "]") + ":" + std::to_string(endpoint.port);
}

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool isSameWord(std::string_view a, std::string_view b) {
  return a.size() == b.size() && curl_strnequal(a.data(), b.data(), a.size()) != 0;
}

bool isProtected(const char* contentType) {
  if (contentType == nullptr) return false;
  const std::string_view type(contentType);
  return isSameWord(trimmed(type.substr(0, type.find(';'))), jose::kMediaType);
}

/// The state of one request, for libcurl's callbacks.
struct Exchange {
  std::string_view unsent;
  std::size_t answerLimit = 0;
  std::string answer = {};
  std::size_t headerBytes = 0;
  std::string length = {};          // the header's value
  bool endsWithConnection = false;  // only the connection's end ends the answer
  bool sent = false;
};

std::size_t sendBody(char* into, std::size_t size, std::size_t count, void* context) {
  auto& exchange = *static_cast<Exchange*>(context);
  const std::size_t now = std::min(size * count, exchange.unsent.size());
  std::memcpy(into, exchange.unsent.data(), now);
  exchange.unsent.remove_prefix(now);
  return now;
}

// libcurl would send the request again when a reused connection dies. It can't rewind the body, and a second
// attempt is stopped.
int refuseRewind(void*, curl_off_t, int) {
  return CURL_SEEKFUNC_FAIL;
}

int allowOnce(void* context, char*, char*, int, int) {
  return std::exchange(static_cast<Exchange*>(context)->sent, true) ? CURL_PREREQFUNC_ABORT
                                                                    : CURL_PREREQFUNC_OK;
}

std::size_t receiveBody(char* data, std::size_t size, std::size_t count, void* context) {
  auto& exchange = *static_cast<Exchange*>(context);
  const std::size_t bytes = size * count;
  if (bytes > exchange.answerLimit - exchange.answer.size()) return CURL_WRITEFUNC_ERROR;
  try {
    exchange.answer.append(data, bytes);
  } catch (const std::exception&) {
    return CURL_WRITEFUNC_ERROR;
  }
  return bytes;
}

/// Whether this header line leaves no doubt where the answer ends. libcurl takes the last
/// of several lengths, passes over codings that it does not know, and takes any version.
bool isClear(std::string_view line, Exchange& exchange) {
  constexpr std::string_view kVersion = "HTTP/";
  if (line.starts_with(kVersion)) {
    exchange.length.clear();
    exchange.endsWithConnection = true;
    return line.substr(kVersion.size()).starts_with("1.");
  }
  const std::size_t colon = line.find(':');
  if (colon == std::string_view::npos) return true;
  const std::string_view name = line.substr(0, colon);
  if (name.empty() || trimmed(name) != name) return false;  // folded, or with a blank before the colon
  const std::string_view value = trimmed(line.substr(colon + 1));
  const bool isCoding = isSameWord(name, "Transfer-Encoding");
  if (!isCoding && !isSameWord(name, "Content-Length")) return true;
  exchange.endsWithConnection = false;
  if (isCoding) return isSameWord(value, "chunked");
  const bool agrees = exchange.length.empty() || exchange.length == value;
  exchange.length = value;
  return agrees && !value.empty() && value.find_first_not_of("0123456789") == std::string_view::npos;
}

std::size_t receiveHeader(char* data, std::size_t size, std::size_t count, void* context) {
  auto& exchange = *static_cast<Exchange*>(context);
  exchange.headerBytes += size * count;
  if (exchange.headerBytes > kMostHeaderBytes) return CURL_WRITEFUNC_ERROR;
  try {
    if (!isClear({data, size * count}, exchange)) return CURL_WRITEFUNC_ERROR;
  } catch (const std::exception&) {
    return CURL_WRITEFUNC_ERROR;
  }
  return size * count;
}

/// libcurl ignores TLS's close_notify: it takes any end of the connection for the end of the answer.
void noticeGoodBye(const SSL* ssl, int where, int alert) {
  constexpr int kReadAlert = SSL_CB_READ | SSL_CB_ALERT;
  if ((where & kReadAlert) != kReadAlert || (alert & 0xFF) != SSL_AD_CLOSE_NOTIFY) return;
  *static_cast<bool*>(SSL_CTX_get_app_data(SSL_get_SSL_CTX(ssl))) = true;
}

CURLcode configureTls(CURL*, void* context, void* closeNotified) {
  auto* tls = static_cast<SSL_CTX*>(context);
  // libcurl would write the connection's secrets to SSLKEYLOGFILE.
  SSL_CTX_set_keylog_callback(tls, nullptr);
  // Keys and signatures of at least 112 bits, whatever the machine's configuration allows.
  SSL_CTX_set_security_level(tls, 2);
  SSL_CTX_set_app_data(tls, closeNotified);
  SSL_CTX_set_info_callback(tls, noticeGoodBye);
  return CURLE_OK;
}

template <class T>
void set(CURL* easy, CURLoption option, T value) {
  if (curl_easy_setopt(easy, option, value) != CURLE_OK) throw Failure("libcurl refused an option");
}

Headers headers(bool sealed) {
  const std::string type =
      "Content-Type: " + std::string(sealed ? jose::kMediaType : "application/x-www-form-urlencoded");
  Headers list(curl_slist_append(nullptr, type.c_str()));
  if (!list || curl_slist_append(list.get(), "Expect:") == nullptr) throw Failure("out of memory");
  return list;
}

long atLeastOne(std::chrono::milliseconds limit) {
  return std::max(1L, static_cast<long>(limit.count()));
}

const char* reasonOf(CURLcode code) {
  switch (code) {
    case CURLE_COULDNT_CONNECT:
      return "nothing listens at that address";
    case CURLE_PEER_FAILED_VERIFICATION:
      return "the server's certificate is not signed by a trusted authority";
    case CURLE_OPERATION_TIMEDOUT:
      return "no complete answer in time";
    default:
      return curl_easy_strerror(code);
  }
}

}  // namespace

struct Transport::Connection {
  explicit Connection(const Network& theNetwork) : network(theNetwork) {
    startLibcurl();
    restart();
  }

  std::optional<std::string> post(const Request& request, const Stop& stop);

 private:
  /// Drops the kept connection and the TLS sessions.
  void restart();
  /// The server has closed the kept connection, or has sent something unasked. libcurl takes close_notify for
  /// a sign of life, and the request would fail since it can't be sent again.
  [[nodiscard]] bool isKeptConnectionOver() const;
  void configure(CURL* handle, const Target& target, const std::string& authorities,
                 const TransportLimits& limits);
  void perform(CURL* handle, const Stop& stop);

  const Network& network;
  bool closeNotified = false;  // the server has sent close_notify; outlives the connection
  Multi multi;
  Easy easy;  // destroyed before the handle that keeps its connections
  curl_socket_t keptSocket = CURL_SOCKET_BAD;
  std::string keptAuthorities;
  std::optional<Endpoint> keptEndpoint;
};

void Transport::Connection::restart() {
  easy.reset();
  keptSocket = CURL_SOCKET_BAD;
  Multi fresh(curl_multi_init());
  if (!fresh || curl_multi_setopt(fresh.get(), CURLMOPT_MAXCONNECTS, 1L) != CURLM_OK) {
    throw std::runtime_error("libcurl does not start");
  }
  multi = std::move(fresh);
  easy.reset(curl_easy_init());
  if (!easy) throw std::runtime_error("libcurl does not start");
}

bool Transport::Connection::isKeptConnectionOver() const {
  pollfd watched{keptSocket, POLLIN, 0};
  return ::poll(&watched, 1, 0) > 0;
}

void Transport::Connection::configure(CURL* handle, const Target& target, const std::string& authorities,
                                      const TransportLimits& limits) {
  curl_easy_reset(handle);
  set(handle, CURLOPT_CURLU, target.url.get());
  set(handle, CURLOPT_PROTOCOLS_STR, "https");
  set(handle, CURLOPT_HTTP_VERSION, long{CURL_HTTP_VERSION_1_1});
  set(handle, CURLOPT_FOLLOWLOCATION, 0L);
  set(handle, CURLOPT_HTTP_CONTENT_DECODING, 0L);
  set(handle, CURLOPT_PROXY, "");  // none, whatever the environment says
  set(handle, CURLOPT_NOSIGNAL, 1L);

  set(handle, CURLOPT_SSLVERSION, long{CURL_SSLVERSION_TLSv1_2});
  set(handle, CURLOPT_SSL_VERIFYPEER, 1L);
  set(handle, CURLOPT_SSL_VERIFYHOST, 2L);
  curl_blob trusted{const_cast<char*>(authorities.data()), authorities.size(), CURL_BLOB_COPY};
  set(handle, CURLOPT_CAINFO_BLOB, &trusted);
  set(handle, CURLOPT_CAINFO, static_cast<char*>(nullptr));
  set(handle, CURLOPT_CAPATH, static_cast<char*>(nullptr));
  set(handle, CURLOPT_SSL_CTX_FUNCTION, configureTls);
  set(handle, CURLOPT_SSL_CTX_DATA, &closeNotified);

  set(handle, CURLOPT_CONNECTTIMEOUT_MS, atLeastOne(limits.connect));
  set(handle, CURLOPT_TIMEOUT_MS, atLeastOne(limits.total));
}

void Transport::Connection::perform(CURL* handle, const Stop& stop) {
  struct Added {
    Added(CURLM* theMulti, CURL* theEasy) : multi(theMulti), easy(theEasy) {
      if (curl_multi_add_handle(multi, easy) != CURLM_OK) throw Failure("the request could not be started");
    }
    ~Added() { curl_multi_remove_handle(multi, easy); }
    Added(const Added&) = delete;
    Added& operator=(const Added&) = delete;
    CURLM* multi;
    CURL* easy;
  };
  keptSocket = CURL_SOCKET_BAD;
  const Added added(multi.get(), handle);
  const Stop::Waking waking(stop, [this] { curl_multi_wakeup(multi.get()); });
  for (int running = 1; running > 0;) {
    if (stop.isRequested()) throw Failure("cancelled");
    if (curl_multi_perform(multi.get(), &running) != CURLM_OK) throw Failure("the request failed to proceed");
    if (running > 0 && curl_multi_poll(multi.get(), nullptr, 0, 1000, nullptr) != CURLM_OK) {
      throw Failure("the request failed to proceed");
    }
  }
  curl_easy_getinfo(handle, CURLINFO_ACTIVESOCKET, &keptSocket);
  int left = 0;
  const CURLMsg* message = curl_multi_info_read(multi.get(), &left);
  if (message == nullptr || message->msg != CURLMSG_DONE) throw Failure("no complete answer");
  if (message->data.result != CURLE_OK) throw Failure(reasonOf(message->data.result));
}

std::optional<std::string> Transport::Connection::post(const Request& request, const Stop& stop) {
  if (network.isInAirplaneMode()) throw Failure("airplane mode is on");
  const Target target = locate(request.url, network);
  const std::string authorities = network.trustedAuthorities();
  if (authorities.empty()) throw Failure("no authority is trusted");
  if (!easy || keptAuthorities != authorities || keptEndpoint != target.endpoint || isKeptConnectionOver()) {
    restart();
    keptAuthorities = authorities;
    keptEndpoint = target.endpoint;
  }

  const TransportLimits limits = network.limits();
  const std::string body = request.hashKey ? jose::seal(request.body, *request.hashKey) : request.body;
  const Headers sent = headers(request.hashKey.has_value());
  const std::string connect = connectTo(target.endpoint);
  const Headers connections(curl_slist_append(nullptr, connect.c_str()));
  if (!connections) throw Failure("out of memory");
  Exchange exchange{body, limits.answerBytes};

  // Kept only if the request succeeds: libcurl 8 would rewind the body of one that has failed when the handle
  // is used again, and the next request would fail.
  Easy current = std::move(easy);
  CURL* handle = current.get();
  configure(handle, target, authorities, limits);
  set(handle, CURLOPT_CONNECT_TO, connections.get());
  set(handle, CURLOPT_POST, 1L);
  set(handle, CURLOPT_HTTPHEADER, sent.get());
  set(handle, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
  set(handle, CURLOPT_READFUNCTION, sendBody);
  set(handle, CURLOPT_READDATA, &exchange);
  set(handle, CURLOPT_SEEKFUNCTION, refuseRewind);
  set(handle, CURLOPT_PREREQFUNCTION, allowOnce);
  set(handle, CURLOPT_PREREQDATA, &exchange);
  set(handle, CURLOPT_WRITEFUNCTION, receiveBody);
  set(handle, CURLOPT_WRITEDATA, &exchange);
  set(handle, CURLOPT_HEADERFUNCTION, receiveHeader);
  set(handle, CURLOPT_HEADERDATA, &exchange);
  closeNotified = false;
  perform(handle, stop);
  easy = std::move(current);
  if (exchange.endsWithConnection && !exchange.answer.empty() && !closeNotified)
    throw Failure("the answer was cut off");

  long status = 0;
  const char* contentType = nullptr;
  curl_easy_getinfo(handle, CURLINFO_RESPONSE_CODE, &status);
  curl_easy_getinfo(handle, CURLINFO_CONTENT_TYPE, &contentType);
  if (status < 200 || status > 299) throw Failure("the answer's status is " + std::to_string(status));
  if (!isProtected(contentType)) return std::move(exchange.answer);
  if (!request.hashKey) throw Failure("the answer is encrypted, but no hash key is set");
  return jose::open(exchange.answer, *request.hashKey);
}

Transport::Transport(const Network& network) : network_(network) {}
Transport::~Transport() = default;

std::optional<std::string> Transport::post(const Request& request, const Stop& stop) {
  try {
    // Created by the first request: an application that sends none does not initialise libcurl.
    if (!connection_) connection_ = std::make_unique<Connection>(network_);
    std::optional<std::string> answer = connection_->post(request, stop);
    if (!answer) network_.requestFailed("the answer could not be decrypted with the hash key");
    return answer;
  } catch (const std::exception& failure) {
    if (!stop.isRequested()) network_.requestFailed(failure.what());
    return std::nullopt;
  }
}

}  // namespace quorvantis::device
