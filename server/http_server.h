// HTTP on a Listener's connections, with cpp-httplib, of which only the parsing of requests, the routes and
// the writing of answers are used. The Listener provides sockets, TLS, threads and timeouts; the size of
// requests is limited here.
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
  /// Reads at most `mostBodyBytes` of a body; then the connection ends. The process's handling of SIGPIPE,
  /// which httplib would change, is restored. Only answers to requests that `mayCompress` accepts are
  /// compressed.
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

/// Keeps reading beyond the limit, and discards it, so that the client gets to read the answer.
RequestBody readBody(const httplib::Request& request, const httplib::ContentReader& reader,
                     std::size_t limit);

}  // namespace quorvantis::server
