#include "phone/provider_side.h"

#include <utility>

#include "report/json.h"

namespace quorvantis::phone {

namespace {

constexpr std::size_t kMostBehindPrompt = 1000;
constexpr std::size_t kMostWaiting = 4096;  // then providers wait until the phone has handled some

json::Dictionary lineOf(const apns::Report& report) {
  json::Dictionary line{{"screen", "provider"}, {"status", report.status}, {"apnsId", report.id}};
  if (!report.pushType.empty()) line.emplace("pushType", report.pushType);
  if (!report.reason.empty()) line.emplace("reason", report.reason);
  if (!report.detail.empty()) line.emplace("detail", report.detail);
  return line;
}

report::PayloadReport reportOn(std::string text, const std::string& pushType) {
  report::PayloadReport report;
  report.file = "a notification of type " + pushType;
  report.bytes = text.size();
  report.findings = lint::findIn(lint::PayloadDocument(text));
  report.text = std::move(text);
  return report;
}

}  // namespace

apns::Room ProviderSide::room() const {
  if (phone_.isFull()) return apns::Room::full;
  const auto waiting = phone_.waitingForAnswer();
  if (!waiting) return apns::Room::free;
  return *waiting + underWay_ < kMostBehindPrompt ? apns::Room::free : apns::Room::promptFull;
}

std::optional<apns::KnownToken> ProviderSide::find(std::string_view token) const {
  const auto known = phone_.tokens().find(token);
  return known ? std::optional(apns::KnownToken{known->invalidSince}) : std::nullopt;
}

void ProviderSide::arrive(apns::Notification notification, const apns::Report& report) {
  if (!notification.isForApplication) return note(report);
  const report::PayloadReport payload = reportOn(std::move(notification.text), notification.pushType);
  if (payload.findings.errors > 0) acceptedErrors_ = true;
  onRequest_(report, payload);
  json::Dictionary line = lineOf(report);
  if (!payload.findings.shown.empty()) line.emplace("findings", *report::jsonOf(payload).find("findings"));

  std::unique_lock lock(mutex_);
  while (arrivals_.size() >= kMostWaiting) {
    lock.unlock();
    haveArrived();
    lock.lock();
    received_.wait_for(lock, std::chrono::milliseconds(100),
                       [this] { return arrivals_.size() < kMostWaiting; });
    if (worker_.isStopped()) return;
  }
  ++underWay_;
  arrivals_.push_back(
      {{.userInfo = std::move(notification.payload),
        .collapseId = notification.collapseId.empty() ? std::nullopt
                                                      : std::optional(std::move(notification.collapseId)),
        .expires = notification.expires,
        .expiresIn = {}},
       std::move(line)});
}

void ProviderSide::haveArrived() {
  worker_.post([this] { receiveAll(); });
}

void ProviderSide::receiveAll() {
  std::unique_lock lock(mutex_);
  std::deque<Arrival> arrivals = std::exchange(arrivals_, {});
  lock.unlock();
  received_.notify_all();
  for (Arrival& arrival : arrivals) {
    phone_.record(arrival.line);
    --underWay_;
    phone_.receive(std::move(arrival.notification));
  }
}

void ProviderSide::refused(const apns::Report& report) {
  note(report);
}

void ProviderSide::note(const apns::Report& report) {
  onRequest_(report, {});
  worker_.post([this, line = lineOf(report)] { phone_.record(line); });
}

}  // namespace quorvantis::phone
