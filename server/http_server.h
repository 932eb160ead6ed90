// Answers the requests on a Listener's connections, by a table of routes. What is not valid, or not in the
// table, is refused here, before a handler sees it.
//
// Threads: connections are served on several threads at a time, and so are the functions called that the
// owner gives.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "server/connection.h"
#include "server/http.h"

namespace quorvantis::server {

class HttpWire;

/// One method at one path.
struct HttpRoute {
  std::string_view method;  ///< "GET" answers HEAD, too
  std::string_view path;
  /// May throw HttpRefusal.
  std::function<HttpResponse(const HttpRequest&)> answer;
  std::vector<std::string_view> mediaTypes = {};  ///< those of the body that are taken; empty: all
  std::size_t mostBodyBytes = 0;                  ///< 0: as the server's
};

struct HttpServerOptions {
  std::vector<HttpRoute> routes = {};
  /// A body that is longer is refused. It is still read, as far as clients would send one by mistake, so that
  /// they get to read the answer.
  std::size_t mostBodyBytes = std::size_t{1} << 20;
  /// From the first byte of a head to its end.
  std::chrono::milliseconds patience = kPatience;
  /// Looks at each request before its body is read and before its path is looked up. May throw HttpRefusal.
  /// Null: lets all in.
  std::function<void(const HttpRequest&)> admit = {};
  /// The answer to a request that is refused; its status and headers are set by the server. The request is
  /// empty if its head could not be read. A failure of a handler has the status 500.
  std::function<HttpResponse(const HttpRequest&, const HttpRefusal&)> refuse = {};
  HttpFields headers = {};  ///< of every answer
};

class HttpServer {
 public:
  explicit HttpServer(HttpServerOptions options);

  /// Answers the connection's requests until it ends.
  void serve(Connection& connection) const;

 private:
  /// False when the connection is over.
  bool serveRequest(HttpWire& wire, Connection& connection) const;

  const HttpServerOptions options_;
};

}  // namespace quorvantis::server
