#include "phone/phone.h"

#include <algorithm>
#include <chrono>
#include <random>
#include <utility>

#include "base/hexadecimal.h"
#include "json/write.h"
#include "lint/document.h"
#include "lint/system_effects.h"
#include "scenario/host.h"
#include "scenario/named_object.h"
#include "scenario/player.h"
#include "scenario/push_service.h"
#include "scenario/step_row.h"
#include "scenario/step_table.h"

namespace quorvantis::phone {

namespace {

// UNNotificationPresentationOptions, as Apple documents them.
constexpr std::int64_t kBadge = 1 << 0;
constexpr std::int64_t kAlert = 1 << 2;
constexpr std::int64_t kList = 1 << 3;
constexpr std::int64_t kBanner = 1 << 4;

std::string randomDigits() {
  return std::to_string(std::random_device()());
}

std::int64_t secondsSince1970() {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::seconds>(now).count();
}

const json::Dictionary* userInfoOf(const scenario::Step& step) {
  const json::Value* userInfo = step.find("userInfo");
  return userInfo == nullptr ? nullptr : userInfo->get<json::Dictionary>();
}

[[noreturn]] void refuseBeforeAnswer() {
  throw NotNow(R"(the permission prompt is on the screen; answer it first, with {"do":"authorization"})");
}

/// Whether a notification comes to the phone with this step, and not only to the application.
bool isArrival(const scenario::Step& step) {
  const json::Value* arrives = step.find("arrives");
  return step.name() == "deliver" ||
         (arrives != nullptr && *arrives == json::Value(nameOf(scenario::Arrival::background)));
}

}  // namespace

struct Phone::World {
  explicit World(const PhoneOptions& options) : device(options.settings) {
    device.build = options.build;
    if (!options.settings.empty()) device.settings.open();
    if (options.server) {
      scenario::leadTo(*options.server, device);
    } else {
      service.emplace(device);
    }
    host = scenario::makeHost(device);
    player.emplace(device, *host, service ? &*service : nullptr);
  }

  [[nodiscard]] std::size_t waitingAnswers() const { return service ? service->waiting() : 0; }

  device::Device device;
  std::optional<scenario::PushService> service;
  std::unique_ptr<scenario::Host> host;
  std::optional<scenario::Player> player;
};

Phone::Phone(PhoneOptions options, Transcript& transcript, const std::vector<Line>& lines)
    : options_(std::move(options)), transcript_(transcript), start_(randomDigits()) {
  begin(lines);
}

Phone::~Phone() = default;

void Phone::begin(const std::vector<Line>& lines) {
  prepare();
  isReplaying_ = true;
  try {
    for (const Line& line : lines) {
      perform(line);
      flush();
    }
  } catch (...) {
    goLive();
    throw;
  }
  goLive();
}

void Phone::prepare() {
  world_.reset();
  waiting_.clear();
  kept_.reset();
  raised_.reset();
  list_ = {};
  isPrompting_ = isDecided_ = hasEnded_ = isInAirplaneMode_ = haveSettingsFailed_ = false;
  world_ = std::make_unique<World>(options_);
  world_->device.network.setOnFailure([this](const std::string& reason) {
    if (world_->device.network.isInAirplaneMode()) ++refusals_;
    world_->device.record.add({{"screen", "requestFailed"}, {"reason", reason}});
  });
  tokens_.begin(world_->device.facts.token);
  transcript_.begin(start_ + '-' + std::to_string(++phones_));

  std::vector<std::string> remarks{"Saved by quorvantis-push phone, version " + options_.version + "."};
  if (options_.build == device::Build::simulator) remarks.emplace_back("To be run with --build simulator.");
  if (options_.server) remarks.emplace_back("To be run with --server and --authority.");
  const json::Dictionary stored = scenario::storedValues(world_->device);
  if (!stored.empty()) show("stored", {{"values", stored}});
  saved_ = SavedScenario(remarks, stored);
}

void Phone::goLive() {
  isReplaying_ = false;
  endIfRaised();
  applyAirplaneMode();
  // From now on a person answers the prompt.
  if (!isDecided_) world_->device.authorization.reset();
  flush();
}

void Phone::play(const Line& line) {
  perform(line);
  deliverWaiting();
  flush();
}

void Phone::receive(Arrive notification) {
  waiting_.push_back(std::move(notification));
  deliverWaiting();
  flush();
}

void Phone::deliverWaiting() {
  while (!isPrompting_ && !waiting_.empty()) {
    const Arrive next = std::move(waiting_.front());
    waiting_.pop_front();
    perform(next);
  }
}

void Phone::tell(const json::Dictionary& line) {
  told_.push_back(json::write(line));
  flush();
}

std::optional<std::string> Phone::token() const {
  const auto& token = world_->device.facts.token;
  return token ? std::optional(base::hexadecimal(*token)) : std::nullopt;
}

const std::string& Phone::systemVersion() const {
  return world_->device.facts.systemVersion;
}

void Phone::perform(const Line& line) {
  std::visit([this](const auto& one) { perform(one); }, line);
}

void Phone::perform(const scenario::Step& step) {
  makeReadyFor(step);
  const std::size_t answers = world_->waitingAnswers();
  const json::Dictionary* userInfo = userInfoOf(step);
  const bool isBehind = world_->device.application.state == device::ApplicationState::background;
  refusals_ = 0;
  world_->player->play(step);
  if (isPrompting_) world_->player->goOn();

  told_.push_back(step.text());
  saved_.add(step);
  tokens_.change(world_->device.facts.token);
  saved_.took(answers - std::min(answers, world_->waitingAnswers()), refusals_);
  if (step.name() == "relaunch") hasEnded_ = false;
  if (step.name() == "authorization") isDecided_ = true;
  if (userInfo != nullptr) tellOfSize(*userInfo);
  if (isBehind && isArrival(step)) notify(*userInfo);
  for (const device::Event& event : world_->device.record.take()) tellEvent(event, userInfo);
  tellOfSettings();
  isPrompting_ = world_->player->isStopped();
  if (isPrompting_) {
    show("prompt");
    saved_.waits();
  }
  if (!isReplaying_) endIfRaised();
}

void Phone::makeReadyFor(const scenario::Step& step) {
  if (isPrompting_ && step.name() != "authorization") refuseBeforeAnswer();
  if (step.needs() != scenario::Needs::runningApplication) return endIfRaised();
  if (hasEnded_ && !isReplaying_) {
    throw NotNow(R"(the application has ended; {"do":"relaunch"} starts it)");
  }
  raised_.reset();
  hasEnded_ = false;
}

void Phone::tellEvent(const device::Event& event, const json::Dictionary* userInfo) {
  told_.push_back(json::write(event));
  const auto kind = event.find("event");
  if (kind == event.end()) return;
  if (kind->second == json::Value("authorizationRequested")) isDecided_ = isDecided_ || isReplaying_;
  if (kind->second == json::Value("raised")) raised_ = *event.at("selector").get<std::string>();
  if (kind->second == json::Value("presented") && userInfo != nullptr) {
    present(*event.at("options").get<std::int64_t>(), *userInfo);
  }
}

void Phone::tellOfSize(const json::Dictionary& userInfo) {
  const std::size_t bytes = json::write(userInfo).size();
  if (bytes <= lint::kLargestPayload) return;
  show("oversized", {{"bytes", std::uint64_t{bytes}}, {"largest", std::uint64_t{lint::kLargestPayload}}});
}

void Phone::tellOfSettings() {
  const auto failure = world_->device.settingsFailure();
  if (!failure || std::exchange(haveSettingsFailed_, true)) return;
  show("settingsFailed", {{"reason", *failure}});
}

void Phone::perform(const Act& act) {
  if (isPrompting_) refuseBeforeAnswer();
  endIfRaised();
  std::visit([this](const auto& one) { perform(one); }, act);
}

void Phone::perform(const End& act) {
  if (hasEnded_) throw NotNow(R"(the application has ended already; {"do":"relaunch"} starts it)");
  record(act);
  end(nullptr);
}

void Phone::perform(const AirplaneMode& act) {
  record(act);
  isInAirplaneMode_ = act.on;
  applyAirplaneMode();
  if (act.on || !kept_) return;
  const Arrive kept = *std::exchange(kept_, std::nullopt);
  if (kept.expires && *kept.expires <= secondsSince1970()) return;
  reach(kept);
}

void Phone::applyAirplaneMode() {
  // What is replayed says of each request that it found no way out, where it can be said.
  world_->device.network.setAirplaneMode(isInAirplaneMode_ && (!isReplaying_ || serverIsElsewhere()));
}

void Phone::perform(const Arrive& act) {
  if (isInAirplaneMode_) {
    record(act);
    kept_ = act;
    return;
  }
  if (hasEnded_) record(act);
  reach(act);
}

void Phone::perform(const Remove& act) {
  if (!list_.remove(act.notification)) {
    if (isReplaying_) return;  // the one that took its place did it
    throw NotNow("notification " + std::to_string(act.notification) + " is not in the list");
  }
  record(act);
  show("unlisted", {{"notification", act.notification}});
}

void Phone::reach(const Arrive& notification) {
  collapseId_ = notification.collapseId;
  if (hasEnded_) {
    notify(notification.userInfo);
  } else if (!isReplaying_) {  // what is replayed has the steps themselves
    perform(scenario::readStep({{"do", "deliver"}, {"userInfo", notification.userInfo}}));
    if (!hasEnded_) perform(scenario::readStep({{"do", "settle"}}));
  }
  collapseId_.reset();
}

void Phone::notify(const json::Dictionary& userInfo) {
  if (!mayNotify()) return;
  if (lint::hasTextToShow(userInfo)) list("listed", userInfo);
  setBadge(userInfo);
}

void Phone::present(std::int64_t options, const json::Dictionary& userInfo) {
  if (!mayNotify()) return;
  const bool asBanner = (options & (kAlert | kBanner)) != 0;
  if ((asBanner || (options & kList) != 0) && lint::hasTextToShow(userInfo)) {
    list(asBanner ? "banner" : "listed", userInfo);
  }
  if ((options & kBadge) != 0) setBadge(userInfo);
}

void Phone::list(const char* how, const json::Dictionary& userInfo) {
  if (const auto earlier = list_.find(collapseId_)) perform(Remove{*earlier});
  show(how, {{"notification", list_.add(collapseId_)}, {"userInfo", userInfo}});
}

void Phone::setBadge(const json::Dictionary& userInfo) {
  const auto badge = lint::effectsInBackground(userInfo).badge;
  if (badge) show("badge", {{"number", *badge}});
}

void Phone::endIfRaised() {
  if (raised_) end(*raised_);
}

void Phone::end(json::Value selector) {
  hasEnded_ = true;
  raised_.reset();
  show("ended", {{"selector", std::move(selector)}});
}

void Phone::show(const char* what, json::Dictionary more) {
  more.emplace("screen", what);
  told_.push_back(json::write(more));
}

void Phone::record(const Act& act) {
  told_.push_back(textOf(act));
  saved_.add(act);
}

void Phone::flush() {
  if (!told_.empty()) transcript_.append(std::exchange(told_, {}));
}

bool Phone::mayNotify() const {
  return isDecided_ && world_->device.authorization && world_->device.authorization->granted;
}

}  // namespace quorvantis::phone
