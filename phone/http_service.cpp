#include "phone/http_service.h"

#include <exception>
#include <latch>
#include <optional>

#include "base/ascii.h"
#include "phone/embedded_files.h"
#include "phone/gate.h"
#include "phone/key.h"
#include "server/http_server.h"
#include "server/listener.h"

namespace quorvantis::phone {

namespace {

constexpr std::size_t kMostBodyBytes = std::size_t{1} << 20;
constexpr std::size_t kMostReadBytes = 4 * kMostBodyBytes;  // of a body that is too long to keep
constexpr std::size_t kMostConnections = 256;

const httplib::Headers& safeHeaders() {
  static const auto& headers = *new httplib::Headers{
      {"Content-Security-Policy",
       "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' data:; connect-src 'self'; "
       "base-uri 'none'; form-action 'none'; frame-ancestors 'none'"},
      {"X-Content-Type-Options", "nosniff"},
      {"Referrer-Policy", "no-referrer"},
      {"Cross-Origin-Opener-Policy", "same-origin"},
      {"Cross-Origin-Resource-Policy", "same-origin"},
      {"Cache-Control", "no-store"}};
  return headers;
}

const char* mediaTypeOf(std::string_view path) {
  if (path.ends_with(".js")) return "text/javascript; charset=utf-8";
  if (path.ends_with(".css")) return "text/css; charset=utf-8";
  if (path.ends_with(".svg")) return "image/svg+xml";
  return "text/html; charset=utf-8";
}

bool sendFile(const std::string& path, httplib::Response& response) {
  for (const EmbeddedFile& file : embeddedFiles()) {
    if (file.path != path) continue;
    response.set_content(file.bytes.data(), file.bytes.size(), mediaTypeOf(path));
    return true;
  }
  return false;
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
  State(const HttpServiceOptions& given, Api& theApi)
      : options(given), api(theApi), http(server::HttpServer::make(kMostReadBytes, [](const auto& request) {
          return !request.path.starts_with("/api/");
        })) {
    setRoutes();
    listener = std::make_unique<server::Listener>(
        server::ListenerOptions{.address = options.address,
                                .port = options.port,
                                .mostConnections = kMostConnections,
                                .serve = [this](server::Connection& connection) {
                                  isReady.wait();
                                  http->serve(connection);
                                }});
    key = options.keepsKey ? keyFor(listener->port()) : newKey();
    gate.emplace(key, hostsOf(options, listener->port()));
    isReady.count_down();
  }

  void setRoutes();
  void answer(const httplib::Request& request, httplib::Response& response, const server::RequestBody& body);

  const HttpServiceOptions options;
  Api& api;
  std::string key;
  std::optional<Gate> gate;
  std::latch isReady{1};
  const std::unique_ptr<server::HttpServer> http;
  std::unique_ptr<server::Listener> listener;  // destroyed first
};

void HttpService::State::setRoutes() {
  const auto withBody = [this](const httplib::Request& request, httplib::Response& response,
                               const httplib::ContentReader& reader) {
    answer(request, response, server::readBody(request, reader, kMostBodyBytes));
  };
  http->Post(server::kAnyPath, withBody);
  http->Put(server::kAnyPath, withBody);
  http->Patch(server::kAnyPath, withBody);
  http->Delete(server::kAnyPath, withBody);
  http->set_pre_routing_handler([this](const httplib::Request& request, httplib::Response& response) {
    for (const char* method : {"POST", "PUT", "PATCH", "DELETE"}) {
      if (request.method == method) return httplib::Server::HandlerResponse::Unhandled;
    }
    answer(request, response, {.text = {}, .whole = true});
    return httplib::Server::HandlerResponse::Handled;
  });
  http->set_exception_handler(
      [](const httplib::Request&, httplib::Response& response, const std::exception_ptr& thrown) {
        try {
          std::rethrow_exception(thrown);
        } catch (const std::exception& error) {
          refuse(response, 500, std::string("the phone failed: ") + error.what());
        }
      });
}

void HttpService::State::answer(const httplib::Request& request, httplib::Response& response,
                                const server::RequestBody& body) {
  response.headers.insert(safeHeaders().begin(), safeHeaders().end());
  response.status = 200;
  if (const auto refusal = gate->check(request)) return refuse(response, refusal->status, refusal->reason);
  if (body.tooLong) return refuse(response, 413, "the body is longer than 1 MiB");
  if (!body.whole) return refuse(response, 400, "the body was cut off");
  if (request.path.starts_with("/api/")) return api.answer(request, response, body.text);
  const bool isGet = request.method == "GET" || request.method == "HEAD";
  if (!isGet) return refuse(response, 405, "only GET is answered here");
  if (options.hasPage && sendFile(request.path, response)) return;
  refuse(response, 404,
         options.hasPage ? "there is nothing at this path" : "the page is turned off (--no-page)");
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
