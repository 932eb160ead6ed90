#include "device/remote_notification.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "device/text.h"

namespace quorvantis::device {

namespace {

using json::Value;

bool saysSomething(const Value* value) {
  const auto* text = value == nullptr ? nullptr : value->get<std::string>();
  return text != nullptr && !text->empty();
}

const Value* inAps(const json::Dictionary& payload, std::string_view key) {
  const auto aps = payload.find("aps");
  return aps == payload.end() ? nullptr : aps->second.find(key);
}

std::optional<std::int64_t> badgeIn(const json::Dictionary& payload) {
  const Value* badge = inAps(payload, "badge");
  if (badge == nullptr) return std::nullopt;
  if (const auto* whole = badge->get<std::int64_t>()) return *whole;
  const auto* real = badge->get<double>();
  return real != nullptr ? std::optional(integerValue(*real)) : std::nullopt;
}

}  // namespace

std::string_view liveActivityEventIn(const json::Dictionary& aps) {
  const auto event = aps.find("event");
  if (event == aps.end()) return {};
  for (const std::string_view name : kLiveActivityEvents) {
    if (event->second == Value(name)) return name;
  }
  return {};
}

std::string_view actBySystemItself(const json::Dictionary& payload) {
  const auto aps = payload.find("aps");
  if (aps == payload.end()) {
    if (payload.contains("mdm")) return "has the device's management contact its server";
    return payload.contains("container-identifier") ? "calls the file provider's extension" : "";
  }
  const auto* dictionary = aps->second.get<json::Dictionary>();
  const std::string_view event = dictionary != nullptr ? liveActivityEventIn(*dictionary) : "";
  if (event == "start") return "starts a Live Activity";
  if (event == "update") return "updates a Live Activity";
  return event == "end" ? "ends a Live Activity" : "";
}

bool hasTextToShow(const json::Dictionary& payload) {
  constexpr std::array<std::string_view, 6> kShown{"title",         "body",    "subtitle",
                                                   "title-loc-key", "loc-key", "subtitle-loc-key"};
  const Value* alert = inAps(payload, "alert");
  if (alert == nullptr) return false;
  return saysSomething(alert) || std::any_of(kShown.begin(), kShown.end(), [&](std::string_view key) {
           return saysSomething(alert->find(key));
         });
}

SystemEffects effectsInBackground(const json::Dictionary& payload) {
  const Value* sound = inAps(payload, "sound");
  const bool playsSound = saysSomething(sound) || (sound != nullptr && saysSomething(sound->find("name")));
  return {hasTextToShow(payload), badgeIn(payload), playsSound};
}

}  // namespace quorvantis::device
