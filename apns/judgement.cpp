#include "apns/judgement.h"

#include <cstdlib>

#include "apns/examination.h"
#include "apns/reasons.h"
#include "apns/uuid.h"
#include "console/wording.h"

namespace quorvantis::apns {
namespace {

constexpr std::size_t kMostIdBytes = 36;
constexpr int kGone = 410;
constexpr std::int64_t kMillisecondsInASecond = 1000;

/// As it was sent, whatever it is, unless it is longer than an id can be.
std::string idFor(const Request& request) {
  const auto& given = request.header(Header::id);
  return given && given->size() <= kMostIdBytes ? *given : makeUuid();
}

Notification notificationOf(Examination& seen) {
  const auto& expiration = seen.request.header(Header::expiration);
  return {.payload = std::move(*seen.payload->get<json::Dictionary>()),
          .text = seen.request.body(),
          .pushType = std::string(seen.pushType->name),
          .isForApplication = seen.pushType->receiver.empty(),
          .collapseId = seen.request.header(Header::collapseId).value_or(""),
          .expires = expiration ? std::optional<std::int64_t>(std::strtoll(expiration->c_str(), nullptr, 10))
                                : std::nullopt};
}

Judgement refused(const Request& request, int status, std::string_view reason, std::string_view detail) {
  Answer answer{.status = status, .reason = std::string(reason), .id = idFor(request)};
  Report report{.status = status,
                .reason = answer.reason,
                .detail = std::string(detail),
                .id = console::printable(answer.id),
                .pushType = console::printable(request.header(Header::pushType).value_or(""))};
  return {std::move(answer), std::move(report), std::nullopt};
}

std::string whyUnheard(const PushType& type) {
  if (type.receiver.empty()) return {};
  return "push type " + std::string(type.name) + " goes to " + std::string(type.receiver) +
         ", and not to the application's notification entry points: the library hears nothing of it";
}

Judgement taken(Examination& seen) {
  Answer answer{.id = idFor(seen.request)};
  Report report{.reason = {},
                .detail = whyUnheard(*seen.pushType),
                .id = answer.id,
                .pushType = std::string(seen.pushType->name)};
  return {std::move(answer), std::move(report), notificationOf(seen)};
}

void remember(Provider& provider, const Examination& seen) {
  if (!seen.token || seen.tokenText == provider.tokenText) return;
  provider.tokenText = seen.tokenText;
  provider.token = seen.token;
}

}  // namespace

Judgement judge(const Request& request, Provider& provider, const Rules& rules, const Phone& phone,
                std::int64_t now) {
  Examination seen(request, provider, rules, phone, now);
  for (const Reason& reason : reasons()) {
    if (reason.holds == nullptr || !reason.holds(seen)) continue;
    Judgement judgement = refusalFor(request, reason, now);
    if (judgement.answer.timestamp) judgement.answer.timestamp = seen.known->invalidSince;
    return judgement;
  }
  remember(provider, seen);
  return taken(seen);
}

Judgement refusalFor(const Request& request, const Reason& reason, std::int64_t now) {
  Judgement judgement = refused(request, reason.status, reason.name, reason.detail);
  if (reason.status == kGone) judgement.answer.timestamp = now * kMillisecondsInASecond;
  return judgement;
}

}  // namespace quorvantis::apns
