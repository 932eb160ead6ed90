#include "apns/connection.h"

#include <algorithm>
#include <array>
#include <utility>

#include "apns/reasons.h"

namespace quorvantis::apns {
namespace {

constexpr std::size_t kReadAtOnce = std::size_t{16} * 1024;  // a TLS record

std::int64_t secondsSince1970() {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::seconds>(now).count();
}

}  // namespace

Connection::Connection(server::Connection& wire, const Rules& rules, const Patience& patience, Phone& phone,
                       FaultQueue& faults, MemoryPool& pool)
    : wire_(wire),
      rules_(rules),
      patience_(patience),
      phone_(phone),
      faults_(faults),
      session_(*this, pool) {}

void Connection::serve() {
  if (!wire_.handshake(patience_.handshake)) return;
  if (const auto peer = wire_.peer()) {
    provider_.certificate =
        peer->isTrusted ? Provider::Certificate::trusted : Provider::Certificate::untrusted;
    provider_.certificateTopic = peer->userId;
  }
  converse();
  if (isCut_) return wire_.cut();
  wire_.finish();
}

void Connection::converse() {
  std::array<char, kReadAtOnce> bytes{};
  lastHeard_ = Clock::now();
  while (sendAll() && !session_.isOver()) {
    const auto patience = std::chrono::ceil<std::chrono::milliseconds>(nextDeadline() - Clock::now());
    if (wire_.readable(std::max(patience, std::chrono::milliseconds(0)))) {
      const auto count = wire_.read(bytes.data(), bytes.size(), patience_.request);
      if (count <= 0) return;
      lastHeard_ = Clock::now();
      if (!session_.receive({bytes.data(), static_cast<std::size_t>(count)})) {
        sendAll();
        return;
      }
    } else if (wire_.stopping()) {
      refuseUnfinished(Clock::time_point::max(), "Shutdown");
      session_.goAway("Shutdown");
      sendAll();
      return;
    }
    const auto now = Clock::now();
    answerWhatIsDue(now);
    refuseUnfinished(now - patience_.request, "IdleTimeout");
    if (now - lastHeard_ < patience_.idle) continue;
    session_.goAway("IdleTimeout");
    sendAll();
    return;
  }
}

bool Connection::sendAll() {
  if (std::exchange(hasArrivals_, false)) phone_.haveArrived();
  for (;;) {
    if (isCut_) return false;
    const std::string output = session_.takeOutput();
    if (output.empty()) return true;
    if (!wire_.write(output, patience_.answer)) return false;
  }
}

void Connection::began(Stream stream) {
  unfinished_.emplace(stream, Clock::now());
}

void Connection::closed(Stream stream) {
  unfinished_.erase(stream);
  std::erase_if(delayed_, [&](const auto& entry) { return entry.second.first == stream; });
}

void Connection::requested(Stream stream, const Request& request) {
  unfinished_.erase(stream);
  if (isCut_) return;
  if (const auto fault = faults_.take()) return act(stream, request, *fault);
  session_.answer(stream, decide(request).answer);
}

Judgement Connection::decide(const Request& request) {
  Judgement judgement = judge(request, provider_, rules_, phone_, secondsSince1970());
  if (judgement.notification) {
    phone_.arrive(std::move(*judgement.notification), judgement.report);
    hasArrivals_ = true;
    session_.trust();
  } else {
    phone_.refused(judgement.report);
  }
  return judgement;
}

void Connection::act(Stream stream, const Request& request, const Fault& fault) {
  switch (fault.kind) {
    case Fault::Kind::answer: {
      const Reason reason{fault.status, fault.reason, "a fault that was requested", nullptr};
      const Judgement judgement = refusalFor(request, reason, secondsSince1970());
      phone_.refused(judgement.report);
      session_.answer(stream, judgement.answer);
      return;
    }
    case Fault::Kind::goAway:
      return session_.goAwayBefore(stream, fault.reason);
    case Fault::Kind::lost:
      decide(request);
      isCut_ = true;
      return;
    case Fault::Kind::cut:
      isCut_ = true;
      return;
    case Fault::Kind::silence:
      return;
    case Fault::Kind::slow:
      delayed_.emplace(Clock::now() + fault.delay, std::pair(stream, decide(request).answer));
      return;
  }
}

void Connection::answerWhatIsDue(Clock::time_point now) {
  while (!delayed_.empty() && delayed_.begin()->first <= now) {
    const auto [stream, answer] = std::move(delayed_.extract(delayed_.begin()).mapped());
    session_.answer(stream, answer);
  }
}

void Connection::refuseUnfinished(Clock::time_point begunBefore, std::string_view reason) {
  while (!unfinished_.empty() && unfinished_.begin()->second <= begunBefore) {
    const Stream stream = unfinished_.extract(unfinished_.begin()).key();
    const Request* const request = session_.unfinished(stream);
    if (request == nullptr) continue;
    const Judgement judgement = refusalFor(*request, *findReason(reason), secondsSince1970());
    phone_.refused(judgement.report);
    session_.answer(stream, judgement.answer);
  }
}

Connection::Clock::time_point Connection::nextDeadline() const {
  auto next = lastHeard_ + patience_.idle;
  if (!delayed_.empty()) next = std::min(next, delayed_.begin()->first);
  if (!unfinished_.empty()) next = std::min(next, unfinished_.begin()->second + patience_.request);
  return next;
}

}  // namespace quorvantis::apns
