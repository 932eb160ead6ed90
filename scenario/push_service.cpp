#include "scenario/push_service.h"

#include <utility>

#include "device/events.h"
#include "jose/jwe.h"
#include "json/write.h"
#include "server/misbehaving_server.h"

namespace quorvantis::scenario {

namespace {

using server::Misbehaviour;

Misbehaviour behaviourOf(Fault fault) {
  if (fault == Fault::silence) return {Misbehaviour::Kind::silence};
  if (fault == Fault::truncate) {
    return {
        Misbehaviour::Kind::cut,
        "HTTP/1.1 200 OK\r\nContent-Type: application/json\r\nContent-Length: 64\r\n\r\n{\"error\":\"no\","};
  }
  return {Misbehaviour::Kind::cut};
}

/// Larger than any request a scenario can cause.
constexpr std::size_t kAnySize = std::size_t{1} << 30;

/// "/path" of "POST /path HTTP/1.1".
std::string pathOf(const std::string& head) {
  const std::size_t start = head.find(' ') + 1;
  return head.substr(start, head.find(' ', start) - start);
}

/// The token that a request registers.
std::string tokenOf(const std::string& body) {
  const server::ParsedRequest parsed = server::parseRequest(body);
  if (!parsed.request) return {};
  return parsed.request->newToken.empty() ? parsed.request->token : parsed.request->newToken;
}

}  // namespace

PushService::PushService(device::Device& device, DefaultAnswer defaultAnswer,
                         std::function<void(const server::Answer&)> onAnswer)
    : device_(device), defaultAnswer_(defaultAnswer) {
  server::PushServerOptions options;
  options.hashKey = kHashKey;
  options.host = kPushHost;
  if (defaultAnswer == DefaultAnswer::accept) options.mostBodyBytes = kAnySize;
  options.onAnswer = std::move(onAnswer);
  options.onRequest = [this](const server::ReceivedRequest& request) {
    recordRequest(request.path, request.body);
  };
  options.responder = [this](const server::ReceivedRequest& request) { return takeAnswer(request); };
  server_ = std::make_unique<server::PushServer>(authority_, std::move(options));
  device_.network.setTrustedAuthorities(authority_.certificate());
  device_.network.setBeforeRequest([this] { prepareTurn(); });
}

PushService::~PushService() {
  device_.network.setBeforeRequest(nullptr);
}

void PushService::prepareTurn() {
  misbehaving_.reset();
  refusing_.reset();
  device_.network.setLimits({});
  std::optional<QueuedAnswer> queued;
  if (!queue_.empty()) {
    queued = std::move(queue_.front());
    queue_.pop_front();
  }
  if (const auto* fault = queued ? std::get_if<Fault>(&*queued) : nullptr) return misbehave(*fault);

  const std::lock_guard lock(mutex_);
  nextAnswer_ = queued ? std::optional(std::get<server::Answer>(*std::move(queued))) : std::nullopt;
  leadTo(server_->port());
}

void PushService::misbehave(Fault fault) {
  if (fault == Fault::refuse) {
    refusing_ = std::make_unique<server::RefusingPort>();
    return leadTo(refusing_->port());
  }
  if (fault == Fault::silence) {
    device_.network.setLimits({.connect = std::chrono::seconds(1), .total = std::chrono::seconds(1)});
  }
  const server::Identity identity =
      fault == Fault::untrusted ? server::Authority().issue(kPushHost) : authority_.issue(kPushHost);
  misbehaving_ = std::make_unique<server::MisbehavingServer>(server::MisbehavingServerOptions{
      .identity = identity,
      .script = {behaviourOf(fault)},
      .onRequest = [this](const std::string& head, const std::string& body) {
        recordRequest(pathOf(head), jose::open(body, kHashKey).value_or(body));
      }});
  leadTo(misbehaving_->port());
}

void PushService::leadTo(std::uint16_t port) {
  device_.network.setHost(kPushHost, {"127.0.0.1", port});
}

void PushService::recordRequest(const std::string& path, const std::string& body) {
  device_.record.add(device::events::received(path, body));
}

std::optional<server::Answer> PushService::takeAnswer(const server::ReceivedRequest& request) {
  const std::lock_guard lock(mutex_);
  if (nextAnswer_) return std::exchange(nextAnswer_, std::nullopt);
  if (defaultAnswer_ == DefaultAnswer::fromRegistrations) return std::nullopt;
  const json::Dictionary answer{{"error", "no"}, {"token", tokenOf(request.body)}};
  return server::Answer{.body = json::write(answer)};
}

}  // namespace quorvantis::scenario
