#include "server/http_server.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "base/ascii.h"
#include "server/gzip.h"
#include "server/http_wire.h"

namespace quorvantis::server {
namespace {

constexpr auto kIdle = std::chrono::minutes(2);                       // between two requests
constexpr std::size_t kMostReadBytes = std::size_t{4} * 1024 * 1024;  // of a body that is too long to keep

std::string joined(const std::vector<std::string_view>& names, std::string_view between) {
  std::string text;
  for (const std::string_view name : names) text.append(text.empty() ? "" : between).append(name);
  return text;
}

HttpRefusal wrongMethod(std::vector<std::string_view> methods) {
  const std::string reason = "the method must be " + joined(methods, " or ");
  if (std::find(methods.begin(), methods.end(), "GET") != methods.end()) methods.emplace_back("HEAD");
  return {405, reason, {{"Allow", joined(methods, ", ")}}};
}

/// Throws HttpRefusal.
const HttpRoute& routeOf(const HttpRequest& request, const std::vector<HttpRoute>& routes) {
  const std::string_view method = request.method == "HEAD" ? "GET" : std::string_view(request.method);
  std::vector<std::string_view> methods;
  for (const HttpRoute& route : routes) {
    if (route.path != request.path) continue;
    if (route.method == method) return route;
    methods.push_back(route.method);
  }
  if (methods.empty()) throw HttpRefusal(404, "there is nothing at this path");
  throw wrongMethod(std::move(methods));
}

/// Throws HttpRefusal.
void checkBody(const HttpRequest& request, const std::vector<std::string_view>& mediaTypes) {
  if (!mediaTypes.empty() &&
      std::find(mediaTypes.begin(), mediaTypes.end(), request.mediaType()) == mediaTypes.end()) {
    throw HttpRefusal(415, "the body must be sent as " + joined(mediaTypes, " or ") + " (Content-Type)");
  }
  if (request.count("Content-Encoding") > 0 &&
      base::lowerCase(std::string(request.header("Content-Encoding"))) != "identity") {
    throw HttpRefusal(415, "the body must be sent as it is, without a Content-Encoding",
                      {{"Accept-Encoding", "identity"}});
  }
}

void compress(const HttpRequest& request, HttpResponse& response) {
  response.headers.emplace_back("Vary", "Accept-Encoding");
  if (!takesGzip(request.header("Accept-Encoding"))) return;
  response.body = gzipped(response.body);
  response.headers.emplace_back("Content-Encoding", "gzip");
}

}  // namespace

HttpServer::HttpServer(HttpServerOptions options) : options_(std::move(options)) {}

void HttpServer::serve(Connection& connection) const {
  connection.beginWaiting();
  if (!connection.handshake(kPatience)) return;
  HttpWire wire(connection);
  while (wire.isOpen() && wire.wait(kIdle) && serveRequest(wire, connection)) connection.beginWaiting();
  wire.finish();
}

bool HttpServer::serveRequest(HttpWire& wire, Connection& connection) const {
  HttpRequest request;
  HttpResponse response;
  const auto refuse = [&](const HttpRefusal& refusal) {
    wire.skipBody(kMostReadBytes);
    response = options_.refuse(request, refusal);
    response.status = refusal.status();
    response.headers.insert(response.headers.end(), refusal.headers().begin(), refusal.headers().end());
  };
  try {
    if (!wire.readHead(request, options_.patience)) return false;
    if (options_.admit) options_.admit(request);
    const HttpRoute& route = routeOf(request, options_.routes);
    checkBody(request, route.mediaTypes);
    const std::size_t most = route.mostBodyBytes == 0 ? options_.mostBodyBytes : route.mostBodyBytes;
    if (!wire.readBody(request.body, most, std::max(kMostReadBytes, most)) || !connection.endWaiting()) {
      return false;
    }
    response = route.answer(request);
  } catch (const HttpRefusal& refusal) {
    refuse(refusal);
  } catch (const std::exception& failure) {
    refuse({500, failure.what()});
  }
  if (response.mayCompress) compress(request, response);
  response.headers.insert(response.headers.end(), options_.headers.begin(), options_.headers.end());
  return connection.endWaiting() && wire.write(response);
}

}  // namespace quorvantis::server
