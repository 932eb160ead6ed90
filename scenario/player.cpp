#include "scenario/player.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "base/hexadecimal.h"
#include "device/events.h"
#include "scenario/delivery.h"
#include "scenario/push_service.h"

namespace quorvantis::scenario {

namespace {

using json::Value;

std::optional<std::string> optionalText(const Value& value) {
  const auto* text = value.get<std::string>();
  return text == nullptr ? std::nullopt : std::optional(*text);
}

void read(const Step& step, std::string_view key, std::string& into) {
  if (const Value* value = step.find(key)) into = *value->get<std::string>();
}

void read(const Step& step, std::string_view key, std::optional<std::string>& into) {
  if (const Value* value = step.find(key)) into = optionalText(*value);
}

void read(const Step& step, std::string_view key, bool& into) {
  if (const Value* value = step.find(key)) into = *value->get<bool>();
}

std::vector<std::string> texts(const json::Array& array) {
  std::vector<std::string> all;
  for (const Value& element : array) all.push_back(*element.get<std::string>());
  return all;
}

std::chrono::nanoseconds durationFrom(const Value& seconds) {
  using std::chrono::nanoseconds;
  constexpr std::int64_t kSecond = 1'000'000'000;
  if (const auto* whole = seconds.get<std::int64_t>()) {
    return *whole > nanoseconds::max().count() / kSecond ? nanoseconds::max() : nanoseconds(*whole * kSecond);
  }
  const double count = *seconds.get<double>() * static_cast<double>(kSecond);
  return count >= static_cast<double>(nanoseconds::max().count()) ? nanoseconds::max()
                                                                  : nanoseconds(std::llround(count));
}

}  // namespace

Player::Player(device::Device& device, Host& host, PushService* service)
    : device_(device), host_(host), service_(service) {
  host_.launch();
}

Player::~Player() {
  device_.endProcess();
  host_.terminate();
}

void Player::play(const Step& step) {
  using Action = void (*)(Player&, const Step&);
  static const auto& actions = *new std::map<std::string_view, Action>{
      {"device", [](Player& p, const Step& s) { p.setDevice(s); }},
      {"application", [](Player& p, const Step& s) { p.setApplication(s); }},
      {"library", [](Player& p, const Step& s) { p.setLibrary(s); }},
      {"store", [](Player& p, const Step& s) { p.store(s); }},
      {"host", [](Player& p, const Step& s) { p.configureHost(s); }},
      {"registration", [](Player& p, const Step& s) { p.setRegistration(s); }},
      {"authorization", [](Player& p, const Step& s) { p.setAuthorization(s); }},
      {"server", [](Player& p, const Step& s) { p.queueAnswers(s); }},
      {"activate", [](Player& p, const Step& s) { p.activate(s); }},
      {"deliverToken", [](Player& p, const Step& s) { p.deliverToken(s); }},
      {"call", [](Player& p, const Step& s) { p.call(s); }},
      {"notification", [](Player& p, const Step& s) { p.deliverNotification(s); }},
      {"deliver", [](Player& p, const Step& s) { p.deliver(s); }},
      {"tapOK", [](Player& p, const Step& s) { p.tapOK(s); }},
      {"settle", [](Player& p, const Step&) { p.settle(); }},
      {"advance", [](Player& p, const Step& s) { p.advance(s); }},
      {"relaunch", [](Player& p, const Step&) { p.relaunch(); }},
      {"show", [](Player& p, const Step&) { p.show(); }},
  };
  actions.at (*step.find("do")->get<std::string>())(*this, step);
}

device::MainQueue::Runner Player::runner() {
  return [this](const device::MainQueue::Task& task) { host_.perform(task); };
}

void Player::settle() {
  device_.queue.settle(runner());
}

void Player::setDevice(const Step& step) {
  device::Facts& facts = device_.facts;
  read(step, "systemVersion", facts.systemVersion);
  read(step, "name", facts.name);
  read(step, "model", facts.model);
  read(step, "country", facts.country);
  if (const Value* languages = step.find("languages")) {
    facts.languages =
        languages->isNull() ? std::nullopt : std::optional(texts(*languages->get<json::Array>()));
  }
  if (const Value* token = step.find("token")) {
    facts.token = token->isNull() ? std::nullopt
                                  : std::optional(*base::bytesFromHexadecimal(*token->get<std::string>()));
  }
  read(step, "tokenError", facts.tokenError);
}

void Player::setApplication(const Step& step) {
  if (const Value* state = step.find("state")) {
    static const auto& states = *new std::map<std::string, device::ApplicationState>{
        {"active", device::ApplicationState::active},
        {"inactive", device::ApplicationState::inactive},
        {"background", device::ApplicationState::background}};
    device_.application.state = states.at(*state->get<std::string>());
  }
  read(step, "version", device_.application.version);
  read(step, "canOpenURL", device_.application.canOpenURL);
}

void Player::setLibrary(const Step& step) {
  read(step, "version", device_.library.version);
  read(step, "loaded", device_.library.loaded);
}

void Player::store(const Step& step) {
  if (const Value* set = step.find("set")) device_.storeFromElsewhere(*set->get<json::Dictionary>());
  if (const Value* remove = step.find("remove"))
    device_.removeFromElsewhere(texts(*remove->get<json::Array>()));
}

void Player::configureHost(const Step& step) {
  if (const Value* appHash = step.find("appHash")) host_.setAppHash(optionalText(*appHash));
  if (const Value* deactivate = step.find("deactivateGPS")) host_.setDeactivateGPS(*deactivate->get<bool>());
  if (const Value* foreground = step.find("foreground"))
    host_.setActiveInForeground(*foreground->get<bool>());
  if (const Value* delegate = step.find("delegate")) {
    const auto* names = delegate->get<json::Array>();
    if (names == nullptr) {
      host_.setDelegate(std::nullopt);
    } else {
      const std::vector<std::string> all = texts(*names);
      host_.setDelegate(std::set<std::string>(all.begin(), all.end()));
    }
  }
}

void Player::setRegistration(const Step& step) {
  read(step, "finishes", device_.registration.finishes);
  if (const Value* stores = step.find("stores"))
    device_.registration.stores = *stores->get<json::Dictionary>();
}

void Player::setAuthorization(const Step& step) {
  if (!device_.authorization) device_.authorization.emplace();
  read(step, "granted", device_.authorization->granted);
  read(step, "error", device_.authorization->error);
}

void Player::queueAnswers(const Step& step) {
  for (const Value& answer : *step.find("answers")->get<json::Array>()) {
    if (const Value* fault = answer.find("fault")) {
      service_->queueFault(*fault->get<std::string>());
      continue;
    }
    const Value* body = answer.find("body");
    service_->queueAnswer(static_cast<int>(*answer.find("status")->get<std::int64_t>()),
                          body != nullptr
                              ? *body->get<std::string>()
                              : *base::bytesFromHexadecimal(*answer.find("bodyHex")->get<std::string>()));
  }
}

void Player::activate(const Step& step) {
  const Value& value = *step.find("value");
  const auto* number = value.get<std::int64_t>();
  const auto byte = static_cast<std::uint8_t>(number != nullptr ? *number : std::int64_t{*value.get<bool>()});
  host_.perform([&] { host_.activate(byte); });
}

void Player::deliverToken(const Step& step) {
  host_.perform(
      [&] { host_.deliverToken(*base::bytesFromHexadecimal(*step.find("hex")->get<std::string>())); });
}

void Player::call(const Step& step) {
  const auto& operation = *step.find("operation")->get<std::string>();
  host_.perform([&] {
    if (operation == "checkAppHash") {
      device_.record.add(device::events::returned(operation, host_.checkAppHash()));
    } else if (operation == "getVersion") {
      const std::optional<std::string> version = host_.getVersion();
      device_.record.add(device::events::returned(operation, version ? Value(*version) : Value()));
    } else if (operation == "resetBadge") {
      host_.resetBadge();
    } else if (operation == "registerFinish") {
      host_.registerFinish();
    } else if (const Value* hex = step.find("hex")) {
      host_.didRegister(*base::bytesFromHexadecimal(*hex->get<std::string>()));
    } else {
      host_.didFailToRegister(*step.find("error")->get<std::string>());
    }
  });
}

void Player::deliverNotification(const Step& step) {
  static const auto& arrivals = *new std::map<std::string, Arrival>{
      {"foreground", Arrival::foreground}, {"background", Arrival::background}, {"tap", Arrival::tap}};
  std::string action = kDefaultAction;
  read(step, "action", action);
  host_.perform([&] {
    host_.deliver(arrivals.at(*step.find("arrives")->get<std::string>()),
                  *step.find("userInfo")->get<json::Dictionary>(), action);
  });
}

void Player::deliver(const Step& step) {
  const auto& userInfo = *step.find("userInfo")->get<json::Dictionary>();
  for (const Arrival arrival : arrivalsOf(userInfo, device_.application.state)) {
    host_.perform([&] { host_.deliver(arrival, userInfo, kDefaultAction); });
  }
}

void Player::tapOK(const Step& step) {
  const std::int64_t alert = *step.find("alert")->get<std::int64_t>();
  const std::vector<int> shown = device_.screen.alerts();
  if (std::find(shown.begin(), shown.end(), alert) == shown.end()) {
    throw ScenarioError(step.line, "alert " + std::to_string(alert) + " is not on screen");
  }
  host_.perform([&] { device_.screen.tap(static_cast<int>(alert)); });
}

void Player::advance(const Step& step) {
  device_.queue.advance(durationFrom(*step.find("seconds")), runner());
}

void Player::relaunch() {
  device_.endProcess();
  host_.terminate();
  host_.launch();
}

void Player::show() {
  json::Dictionary values = device_.settings.values();
  values.erase("AppleLanguages");
  device_.record.add(device::events::settings(std::move(values)));
}

}  // namespace quorvantis::scenario
