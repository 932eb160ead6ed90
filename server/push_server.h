// The development push server: HTTPS on loopback, the protocol of docs/push-server.md, registrations in
// SQLite.
//
// Threads: started, stopped and destroyed by one thread; the callbacks are called on the server's
// threads, one request at a time. They must not destroy the server.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "server/authority.h"
#include "server/push_request.h"
#include "server/server_error.h"

namespace quorvantis::server {

/// The path of the one endpoint.
inline constexpr const char* kEndpointPath = "/apis/api_push_v3.php";

/// A request, decrypted.
struct ReceivedRequest {
  std::string path;
  std::string body;
  std::string mediaType;  ///< of the request as received
};

struct Answer {
  int status = 200;  ///< 200 to 599, but neither 204 nor 304
  std::string body = {};
  std::string mediaType = "application/json";
};

/// A malformed request, or one that could not be answered.
struct RefusedRequest {
  std::string method;
  std::string path;
  std::string reason;
  int status;  ///< of the answer
};

struct PushServerOptions {
  std::uint16_t port = 0;                    ///< 0: any that is free
  std::string dataFile = {};                 ///< empty: registrations are kept in memory
  std::string hashKey = {};                  ///< decrypts requests; empty: encrypted requests are refused
  std::string host = "push.quorvantis.com";  ///< in the certificate, besides loopback
  std::size_t mostBodyBytes = std::size_t{64} * 1024;  ///< the limit for a body as received
  bool sealAnswers = false;  ///< encrypt the answers to encrypted requests with the same key
  /// Called with each well-formed request, before it is answered.
  std::function<void(const ReceivedRequest&)> onRequest = {};
  /// Called with each answer to a well-formed request, before it is encrypted and sent.
  std::function<void(const Answer&)> onAnswer = {};
  /// Called with each refused request, before its answer is sent; not for requests that are not HTTP.
  std::function<void(const RefusedRequest&)> onRefused = {};
  /// Called once for each well-formed request; an answer that it returns replaces the registrations' answer.
  std::function<std::optional<Answer>(const ReceivedRequest&)> responder = {};
};

class PushServer {
 public:
  /// Listens when it returns. Throws ServerError.
  PushServer(const Authority& authority, PushServerOptions options);
  /// Finishes the requests that have been read, and stops.
  ~PushServer();
  PushServer(const PushServer&) = delete;
  PushServer& operator=(const PushServer&) = delete;

  [[nodiscard]] std::uint16_t port() const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace quorvantis::server
