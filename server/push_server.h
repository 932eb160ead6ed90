// The push server for development: HTTPS on loopback, the protocol of docs/push-server.md, registrations in
// SQLite.
//
// Threads: started, stopped and destroyed by one thread; the hooks and the responder are called on the
// server's own threads, one request at a time. They must not destroy the server.
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

/// A request as it came out of its protection.
struct ReceivedRequest {
  std::string path;
  std::string body;
  std::string mediaType;  ///< of the request as it came over the wire
};

struct Answer {
  int status = 200;  ///< 200 to 599, but neither 204 nor 304
  std::string body = {};
  std::string mediaType = "application/json";
};

/// A request that was refused as malformed, or that could not be answered.
struct RefusedRequest {
  std::string method;
  std::string path;
  std::string reason;
  int status;  ///< of the answer
};

struct PushServerOptions {
  std::uint16_t port = 0;                    ///< 0: any that is free
  std::string dataFile = {};                 ///< empty: registrations live in memory
  std::string hashKey = {};                  ///< opens protected requests; empty: none are opened
  std::string host = "push.quorvantis.com";  ///< whom the certificate names, beside loopback
  std::size_t mostBodyBytes =
      std::size_t{64} * 1024;  ///< longer ones are refused, as they come over the wire
  bool sealAnswers = false;    ///< protect the answers to protected requests with the same key
  /// Sees each well-formed request, before it is answered.
  std::function<void(const ReceivedRequest&)> onRequest = {};
  /// Sees each answer to a well-formed request before it leaves, and before it is protected.
  std::function<void(const Answer&)> onAnswer = {};
  /// Sees each request that is refused, before its answer leaves. Those that are no HTTP are not seen.
  std::function<void(const RefusedRequest&)> onRefused = {};
  /// Answers in place of the registrations, where it gives an answer. Called once for each well-formed
  /// request.
  std::function<std::optional<Answer>(const ReceivedRequest&)> responder = {};
};

class PushServer {
 public:
  /// Listens when it returns. Throws ServerError.
  PushServer(const Authority& authority, PushServerOptions options);
  /// Finishes the requests that were read, and stops.
  ~PushServer();
  PushServer(const PushServer&) = delete;
  PushServer& operator=(const PushServer&) = delete;

  [[nodiscard]] std::uint16_t port() const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace quorvantis::server
