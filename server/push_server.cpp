#include "server/push_server.h"

#include <algorithm>
#include <exception>
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
constexpr std::size_t kMostReadBytes = std::size_t{4} * 1024 * 1024;  // of a body that is too long to keep
constexpr std::string_view kFormType = "application/x-www-form-urlencoded";

std::string refusal(const std::string& reason) {
  return json::write(json::Dictionary{{"error", "si"}, {"errorDescripcion", reason}});
}

std::string success(const std::string& token) {
  return json::write(json::Dictionary{{"error", "no"}, {"token", token}});
}

bool isNoToken(const std::string& token) {
  return token.empty() || token == "(null)";
}

void send(const Answer& answer, httplib::Response& response) {
  response.status = answer.status;
  response.set_content(answer.body, answer.mediaType);
}

/// For the server's operator; clients do not get it.
std::string reasonOf(const std::exception_ptr& failure) {
  try {
    std::rethrow_exception(failure);
  } catch (const std::exception& error) {
    return error.what();
  } catch (...) {
    return "unknown error";
  }
}

}  // namespace

struct PushServer::State {
  State(const Authority& authority, PushServerOptions given)
      : options(std::move(given)),
        registrations(options.dataFile),
        http(HttpServer::make(std::max(kMostReadBytes, options.mostBodyBytes))) {
    if (!options.hashKey.empty() && options.hashKey.size() != kKeyBytes) {
      throw ServerError("the hash key must have 32 bytes");
    }
    setRoutes();
    listener = std::make_unique<Listener>(
        ListenerOptions{.port = options.port,
                        .identity = authority.issue({options.host, "localhost", "127.0.0.1"}),
                        .highestTlsVersion = 0,
                        .serve = [this](Connection& connection) { http->serve(connection); }});
  }

  void setRoutes();
  void receive(const httplib::Request& request, httplib::Response& response, const RequestBody& body);
  void reportRefused(const httplib::Request& request, int status, const std::string& reason) const;
  /// The answer to a well-formed request.
  Answer decide(const ReceivedRequest& received, const PushRequest& request);
  Answer registered(const PushRequest& request);

  const PushServerOptions options;
  std::mutex mutex;  // one request at a time
  Registrations registrations;
  const std::unique_ptr<HttpServer> http;
  std::unique_ptr<Listener> listener;  // destroyed first
};

void PushServer::State::setRoutes() {
  const auto withBody = [this](const httplib::Request& request, httplib::Response& response,
                               const httplib::ContentReader& reader) {
    receive(request, response, readBody(request, reader, options.mostBodyBytes));
  };
  http->Post(kAnyPath, withBody);
  http->Put(kAnyPath, withBody);
  http->Patch(kAnyPath, withBody);
  http->Delete(kAnyPath, withBody);
  http->set_pre_routing_handler([this](const httplib::Request& request, httplib::Response& response) {
    for (const char* method : {"POST", "PUT", "PATCH", "DELETE"}) {
      if (request.method == method) return httplib::Server::HandlerResponse::Unhandled;
    }
    receive(request, response, RequestBody{});
    return httplib::Server::HandlerResponse::Handled;
  });
  http->set_exception_handler([this](const httplib::Request& request, httplib::Response& response,
                                     const std::exception_ptr& failure) {
    const std::lock_guard lock(mutex);
    reportRefused(request, 500, "the server failed: " + reasonOf(failure));
    send({500, refusal("the server failed"), "application/json"}, response);
  });
}

void PushServer::State::reportRefused(const httplib::Request& request, int status,
                                      const std::string& reason) const {
  if (options.onRefused) options.onRefused({request.method, request.path, reason, status});
}

void PushServer::State::receive(const httplib::Request& request, httplib::Response& response,
                                const RequestBody& body) {
  const std::lock_guard lock(mutex);
  const auto refuse = [&](int status, const std::string& reason) {
    reportRefused(request, status, reason);
    send({status, refusal(reason), "application/json"}, response);
  };
  const std::string type = mediaTypeOf(request);
  const bool isProtected = type == jose::kMediaType;
  if (request.path != kEndpointPath) return refuse(404, "there is nothing at this path");
  if (request.method != "POST") return refuse(405, "the method must be POST");
  if (!isProtected && type != kFormType) {
    return refuse(415, "the body must be application/jose or application/x-www-form-urlencoded");
  }
  if (body.tooLong)
    return refuse(413, "the body is longer than " + std::to_string(options.mostBodyBytes / 1024) + " KiB");
  if (!body.whole) return refuse(400, "the body was cut off");

  const auto plain = isProtected ? jose::open(body.text, options.hashKey) : body.text;
  if (!plain) return refuse(400, "the body can't be decrypted with the hash key");
  if (!base::isUTF8(*plain)) return refuse(400, "the body is not UTF-8");
  const ParsedRequest parsed = parseRequest(*plain);
  if (!parsed.request) return refuse(400, parsed.problem);

  Answer answer = decide({request.path, *plain, request.get_header_value("Content-Type")}, *parsed.request);
  if (options.onAnswer) options.onAnswer(answer);
  if (isProtected && options.sealAnswers) {
    answer.body = jose::seal(answer.body, options.hashKey);
    answer.mediaType = jose::kMediaType;
  }
  send(answer, response);
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
  if (isNoToken(token)) return {.body = refusal("there is no token")};
  if (!change) {
    registrations.add(request);
  } else if (!registrations.change(request)) {
    return {.body = refusal("the old token is not registered")};
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
