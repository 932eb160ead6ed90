#include "phone/http_service.h"

#include <latch>
#include <optional>
#include <utility>
#include <vector>

#include "base/ascii.h"
#include "phone/embedded_files.h"
#include "phone/gate.h"
#include "phone/key.h"
#include "server/http_server.h"
#include "server/listener.h"

namespace quorvantis::phone {

namespace {

constexpr std::size_t kMostBodyBytes = std::size_t{1} << 20;
constexpr std::size_t kMostConnections = 256;

server::HttpFields safeHeaders() {
  return {
      {"Content-Security-Policy",
       "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' data:; connect-src 'self'; "
       "base-uri 'none'; form-action 'none'; frame-ancestors 'none'"},
      {"X-Content-Type-Options", "nosniff"},
      {"Referrer-Policy", "no-referrer"},
      {"Cross-Origin-Opener-Policy", "same-origin"},
      {"Cross-Origin-Resource-Policy", "same-origin"},
      {"Cache-Control", "no-store"}};
}

const char* mediaTypeOf(std::string_view path) {
  if (path.ends_with(".js")) return "text/javascript; charset=utf-8";
  if (path.ends_with(".css")) return "text/css; charset=utf-8";
  if (path.ends_with(".svg")) return "image/svg+xml";
  return "text/html; charset=utf-8";
}

void addPage(std::vector<server::HttpRoute>& routes) {
  for (const EmbeddedFile& file : embeddedFiles()) {
    routes.push_back({"GET", file.path, [&file](const auto&) {
                        return server::HttpResponse{.body = std::string(file.bytes),
                                                    .mediaType = mediaTypeOf(file.path),
                                                    .mayCompress = true};
                      }});
  }
}

/// The address as it stands before a port.
std::string hostOf(const std::string& address) {
  return address.find(':') == std::string::npos ? address : '[' + address + ']';
}

std::vector<std::string> hostsOf(const HttpServiceOptions& options, std::uint16_t port) {
  const std::string suffix = ':' + std::to_string(port);
  std::vector<std::string> hosts;
  for (const char* name : {"127.0.0.1", "localhost", "[::1]"}) hosts.push_back(name + suffix);
  if (options.publicHost.empty()) return hosts;
  const std::string name = base::lowerCase(options.publicHost);
  hosts.push_back(name);
  hosts.push_back(name + suffix);
  return hosts;
}

}  // namespace

struct HttpService::State {
  State(const HttpServiceOptions& given, Api& api) : options(given), http(httpOptions(api)) {
    listener = std::make_unique<server::Listener>(
        server::ListenerOptions{.address = options.address,
                                .port = options.port,
                                .mostConnections = kMostConnections,
                                .serve = [this](server::Connection& connection) {
                                  isReady.wait();
                                  http.serve(connection);
                                }});
    key = options.keepsKey ? keyFor(listener->port()) : newKey();
    gate.emplace(key, hostsOf(options, listener->port()));
    isReady.count_down();
  }

  server::HttpServerOptions httpOptions(Api& api);
  server::HttpResponse refuse(const server::HttpRequest& request, const server::HttpRefusal& reason) const;

  const HttpServiceOptions options;
  std::string key;
  std::optional<Gate> gate;
  std::latch isReady{1};
  const server::HttpServer http;
  std::unique_ptr<server::Listener> listener;  // destroyed first
};

server::HttpServerOptions HttpService::State::httpOptions(Api& api) {
  std::vector<server::HttpRoute> routes = api.routes();
  if (options.hasPage) addPage(routes);
  return {.routes = std::move(routes),
          .mostBodyBytes = kMostBodyBytes,
          .admit = [this](const auto& request) { gate->check(request); },
          .refuse = [this](const auto& request, const auto& reason) { return refuse(request, reason); },
          .headers = safeHeaders()};
}

server::HttpResponse HttpService::State::refuse(const server::HttpRequest& request,
                                                const server::HttpRefusal& reason) const {
  std::string text = reason.what();
  if (reason.status() == 500) text = "the phone failed: " + text;
  if (reason.status() == 404) {
    if (request.path.starts_with("/api/")) {
      text += "; docs/phone.md lists the requests";
    } else if (!options.hasPage) {
      text = "the page is turned off (--no-page)";
    }
  }
  return refusal(reason.status(), text);
}

HttpService::HttpService(const HttpServiceOptions& options, Api& api)
    : state_(std::make_unique<State>(options, api)) {}
HttpService::~HttpService() = default;

std::uint16_t HttpService::port() const {
  return state_->listener->port();
}

const std::string& HttpService::key() const {
  return state_->key;
}

std::string HttpService::address() const {
  const std::string& name = state_->options.publicHost;
  const std::string& address = state_->options.address;
  const bool isEverywhere = address == "0.0.0.0" || address == "::";
  const std::string host = name.empty() ? hostOf(isEverywhere ? server::kLoopback : address) : name;
  const bool hasPort = !name.empty() && name.find(':') != std::string::npos;
  return "http://" + host + (hasPort ? "" : ':' + std::to_string(port())) + "/#" + key();
}

}  // namespace quorvantis::phone
