// HTTP on a Listener's connections, by cpp-httplib: only its reading of requests, its routes and its writing
// of answers. Sockets, TLS, threads and patience are the Listener's; how much is read of a request is bounded
// here.
//
// Threads: the routes are set before the first connection; connections are served on several threads at a
// time.
#pragma once

#include <httplib.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "server/listener.h"

namespace quorvantis::server {

class HttpServer : public httplib::Server {
 public:
  /// Of a body no more is read than `mostBodyBytes`; the connection ends there. What the process does with
  /// SIGPIPE, which httplib would change, stays as it is.
  /// Answers go out as they are, but for those to the requests that `mayCompress` says yes of.
  static std::unique_ptr<HttpServer> make(std::size_t mostBodyBytes,
                                          std::function<bool(const httplib::Request&)> mayCompress = nullptr);

  /// Answers the connection's requests until it ends.
  void serve(Connection& connection);

 private:
  class Stream;

  HttpServer(std::size_t mostBodyBytes, std::function<bool(const httplib::Request&)> mayCompress)
      : mostBodyBytes_(mostBodyBytes), mayCompress_(std::move(mayCompress)) {}
  /// Whether another request may follow.
  bool serveRequest(Stream& stream);

  const std::size_t mostBodyBytes_;
  const std::function<bool(const httplib::Request&)> mayCompress_;
};

/// Any path, for a route.
inline constexpr const char* kAnyPath = "[^]*";

/// The media type of the request's body, in lower case, without parameters.
std::string mediaTypeOf(const httplib::Request& request);

struct RequestBody {
  std::string text;
  bool whole = false;
  bool tooLong = false;
};

/// Reads on beyond the limit, without keeping it, so that the client is there for the answer.
RequestBody readBody(const httplib::Request& request, const httplib::ContentReader& reader,
                     std::size_t limit);

}  // namespace quorvantis::server
