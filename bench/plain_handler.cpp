#include "bench/plain_handler.h"

namespace quorvantis::bench {

using nlohmann::json;

namespace {

constexpr const char* kExtras[] = {"extra1", "extra2", "extra3", "extra4", "extra5"};
constexpr const char* kStored[] = {"pushExtra1", "pushExtra2", "pushExtra3", "pushExtra4", "pushExtra5"};
constexpr std::uint32_t kVibration = 4095;

void copy(const json& from, const char* key, json& to) {
  if (const auto entry = from.find(key); entry != from.end()) to[key] = *entry;
}

}  // namespace

void PlainHandler::handle(const json& payload) {
  json report = json::object();
  if (const auto aps = payload.find("aps"); aps != payload.end()) reportOn(*aps, report);
  onReceived_(report);
}

void PlainHandler::reportOn(const json& aps, json& report) {
  const auto alert = aps.find("alert");
  if (alert == aps.end()) {
    report["type"] = "silent";
    for (const auto& [key, value] : aps.items()) report[key == "type" ? "customType" : key] = value;
    return;
  }
  report["alert"] = *alert;
  if (const auto badge = aps.find("badge"); badge != aps.end()) {
    device_.setBadge(badge->get<std::int64_t>());
    report["badge"] = *badge;
  }
  copy(aps, "content-available", report);

  const auto type = aps.find("type");
  if (type == aps.end()) {
    for (const char* extra : kExtras) copy(aps, extra, report);
    return;
  }
  report["type"] = *type;
  if (*type == "pushlib-abrirurl") openURL(aps, report);
  if (*type == "pushlib-normal" || *type == "pushlib-abrirapp") vibrate();
  if (*type == "pushlib-extras") storeExtras(aps);
}

void PlainHandler::openURL(const json& aps, json& report) {
  if (const auto link = aps.find("urlnoti"); link != aps.end()) {
    address_ = *link;
    report["urlnoti"] = *link;
    if (device_.application.state == device::ApplicationState::active) {
      const json& alert = aps.at("alert");
      device_.screen.present({.title = alert.at("title").get<std::string>(),
                              .message = alert.at("body").get<std::string>(),
                              .buttons = {"OK"},
                              .windowLevel = device::kAlertWindowLevel + 1,
                              .fillsScreen = true,
                              .animated = true,
                              .onTap = [this] { device_.open(address_); }});
    }
  }
  vibrate();
}

void PlainHandler::storeExtras(const json& aps) {
  for (std::size_t i = 0; i < std::size(kExtras); ++i) {
    const auto extra = aps.find(kExtras[i]);
    if (extra == aps.end()) continue;
    device_.setUserDefault(kStored[i], extra->is_string()
                                           ? quorvantis::json::Value(extra->get<std::string>())
                                           : quorvantis::json::Value(extra->get<std::int64_t>()));
  }
  device_.synchronizeUserDefaults();
}

void PlainHandler::vibrate() {
  if (showInForeground) device_.playSystemSound(kVibration);
}

}  // namespace quorvantis::bench
