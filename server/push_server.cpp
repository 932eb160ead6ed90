#include "server/push_server.h"

#include <mutex>
#include <string_view>
#include <utility>

#include "base/utf8.h"
#include "jose/jwe.h"
#include "json/write.h"
#include "server/http_server.h"
#include "server/listener.h"
#include "server/registrations.h"

namespace quorvantis::server {
namespace {

constexpr std::size_t kKeyBytes = 32;
constexpr std::string_view kFormType = "application/x-www-form-urlencoded";

std::string refusalBody(const std::string& reason) {
  return json::write(json::Dictionary{{"error", "si"}, {"errorDescripcion", reason}});
}

std::string success(const std::string& token) {
  return json::write(json::Dictionary{{"error", "no"}, {"token", token}});
}

bool isNoToken(const std::string& token) {
  return token.empty() || token == "(null)";
}

}  // namespace

struct PushServer::State {
  State(const Authority& authority, PushServerOptions given)
      : options(std::move(given)), registrations(options.dataFile), http(httpOptions()) {
    if (!options.hashKey.empty() && options.hashKey.size() != kKeyBytes) {
      throw ServerError("the hash key must have 32 bytes");
    }
    listener = std::make_unique<Listener>(
        ListenerOptions{.port = options.port,
                        .tls = {.identity = authority.issue({options.host, "localhost", "127.0.0.1"})},
                        .serve = [this](Connection& connection) { http.serve(connection); }});
  }

  HttpServerOptions httpOptions();
  HttpResponse receive(const HttpRequest& request);
  HttpResponse refuse(const HttpRequest& request, const HttpRefusal& reason);
  /// The answer to a well-formed request.
  Answer decide(const ReceivedRequest& received, const PushRequest& request);
  Answer registered(const PushRequest& request);

  const PushServerOptions options;
  std::mutex mutex;  // one request at a time
  Registrations registrations;
  const HttpServer http;
  std::unique_ptr<Listener> listener;  // destroyed first
};

HttpServerOptions PushServer::State::httpOptions() {
  return {.routes = {{.method = "POST",
                      .path = kEndpointPath,
                      .answer = [this](const auto& request) { return receive(request); },
                      .mediaTypes = {jose::kMediaType, kFormType}}},
          .mostBodyBytes = options.mostBodyBytes,
          .refuse = [this](const auto& request, const auto& reason) { return refuse(request, reason); }};
}

HttpResponse PushServer::State::refuse(const HttpRequest& request, const HttpRefusal& refusal) {
  const bool isFailure = refusal.status() == 500;
  const std::string shown = isFailure ? "the server failed" : refusal.what();
  if (options.onRefused && !request.method.empty()) {
    const std::lock_guard lock(mutex);
    options.onRefused(
        {request.method, request.path, isFailure ? shown + ": " + refusal.what() : shown, refusal.status()});
  }
  return {.body = refusalBody(shown)};
}

HttpResponse PushServer::State::receive(const HttpRequest& request) {
  const std::lock_guard lock(mutex);
  const bool isProtected = request.mediaType() == jose::kMediaType;
  const auto plain = isProtected ? jose::open(request.body, options.hashKey) : request.body;
  if (!plain) throw HttpRefusal(400, "the body can't be decrypted with the hash key");
  if (!base::isUTF8(*plain)) throw HttpRefusal(400, "the body is not UTF-8");
  const ParsedRequest parsed = parseRequest(*plain);
  if (!parsed.request) throw HttpRefusal(400, parsed.problem);

  Answer answer =
      decide({request.path, *plain, std::string(request.header("Content-Type"))}, *parsed.request);
  if (options.onAnswer) options.onAnswer(answer);
  if (isProtected && options.sealAnswers) {
    answer.body = jose::seal(answer.body, options.hashKey);
    answer.mediaType = jose::kMediaType;
  }
  return {.status = answer.status, .body = std::move(answer.body), .mediaType = std::move(answer.mediaType)};
}

Answer PushServer::State::decide(const ReceivedRequest& received, const PushRequest& request) {
  if (options.onRequest) options.onRequest(received);
  if (options.responder) {
    if (auto answer = options.responder(received)) return std::move(*answer);
  }
  return registered(request);
}

Answer PushServer::State::registered(const PushRequest& request) {
  const bool change = request.task == kChangeTask;
  const std::string& token = change ? request.newToken : request.token;
  if (isNoToken(token)) return {.body = refusalBody("there is no token")};
  if (!change) {
    registrations.add(request);
  } else if (!registrations.change(request)) {
    return {.body = refusalBody("the old token is not registered")};
  }
  return {.body = success(token)};
}

PushServer::PushServer(const Authority& authority, PushServerOptions options)
    : state_(std::make_unique<State>(authority, std::move(options))) {}
PushServer::~PushServer() = default;

std::uint16_t PushServer::port() const {
  return state_->listener->port();
}

}  // namespace quorvantis::server
