// HTTP on a Listener's connections, by cpp-httplib: only its reading of requests, its routes and its writing
// of answers. Sockets, TLS, threads and patience are the Listener's; how much is read of a request is bounded
// here.
//
// Threads: the routes are set before the first connection; connections are served on several threads at a
// time.
#pragma once

#include <httplib.h>

#include <cstddef>
#include <memory>

#include "server/listener.h"

namespace quorvantis::server {

class HttpServer : public httplib::Server {
 public:
  /// Of a body no more is read than `mostBodyBytes`; the connection ends there. What the process does with
  /// SIGPIPE, which httplib would change, stays as it is.
  static std::unique_ptr<HttpServer> make(std::size_t mostBodyBytes);

  /// Answers the connection's requests until it ends.
  void serve(Connection& connection);

 private:
  class Stream;

  explicit HttpServer(std::size_t mostBodyBytes) : mostBodyBytes_(mostBodyBytes) {}
  /// Whether another request may follow.
  bool serveRequest(Stream& stream);

  const std::size_t mostBodyBytes_;
};

}  // namespace quorvantis::server
