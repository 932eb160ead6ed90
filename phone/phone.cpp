#include "phone/phone.h"

#include <algorithm>
#include <chrono>
#include <deque>
#include <random>
#include <utility>

#include "base/hexadecimal.h"
#include "device/remote_notification.h"
#include "json/write.h"
#include "phone/notification_list.h"
#include "scenario/host.h"
#include "scenario/named_object.h"
#include "scenario/player.h"
#include "scenario/push_service.h"
#include "scenario/step_row.h"
#include "scenario/step_table.h"

namespace quorvantis::phone {

namespace {

// UNNotificationPresentationOptionAlert, all that the library asks for.
constexpr std::int64_t kAlert = 1 << 2;

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

/// Whether this step delivers a notification to the phone, and not only to the application.
bool isArrival(const scenario::Step& step) {
  const json::Value* arrives = step.find("arrives");
  return step.name() == "deliver" ||
         (arrives != nullptr && *arrives == json::Value(nameOf(scenario::Arrival::background)));
}

}  // namespace

struct Phone::World {
  World(const PhoneOptions& options, const std::string& settings) : device(settings) {
    device.build = options.build;
    if (!settings.empty()) device.settings.open();
    if (options.server) {
      scenario::leadTo(*options.server, device);
    } else {
      service.emplace(device);
    }
    host = scenario::makeHost(device);
    player.emplace(device, *host, service ? &*service : nullptr);
  }

  [[nodiscard]] std::size_t waitingAnswers() const { return service ? service->queued() : 0; }

  device::Device device;
  std::optional<scenario::PushService> service;
  std::unique_ptr<scenario::Host> host;
  std::optional<scenario::Player> player;

  bool isPrompting = false;
  bool isDecided = false;  // whether the application may notify
  bool hasEnded = false;
  bool isInAirplaneMode = false;
  std::optional<std::string> raised = {};           // the exception that ends the application
  std::size_t refusals = 0;                         // of requests in airplane mode, during this step
  std::optional<std::string> settingsFailure = {};  // why they can no longer be kept

  NotificationList list;
  CollapseId collapseId = {};       // of the notification that is being delivered
  std::optional<Arrive> kept = {};  // the last one that came in airplane mode
  std::deque<Arrive> waiting;       // until the prompt is answered
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

void Phone::makeWorld() {
  world_.reset();
  try {
    world_ = std::make_unique<World>(options_, options_.settings);
  } catch (const device::SettingsError& error) {
    if (phones_ == 0) throw;  // nobody uses it yet
    world_ = std::make_unique<World>(options_, "");
    world_->settingsFailure = error.what();
  }
}

void Phone::prepare() {
  makeWorld();
  world_->device.network.setOnFailure([this](const std::string& reason) {
    // An external push server can't be made to refuse; a phone that replays these uses its airplane mode.
    if (world_->device.network.isInAirplaneMode() && !serverIsElsewhere()) ++world_->refusals;
    world_->device.record.add({{"screen", "requestFailed"}, {"reason", reason}});
  });
  if (serverIsElsewhere()) {
    // There is no other sign that a request's turn has come.
    world_->device.network.setBeforeRequest([this] { world_->device.record.add({{"screen", "sent"}}); });
  }
  tokens_.begin(world_->device.facts.token);
  transcript_.begin(start_ + '-' + std::to_string(++phones_));

  std::vector<std::string> remarks{"Saved by quorvantis-push phone, version " + options_.version + "."};
  if (options_.build == device::Build::simulator) remarks.emplace_back("To be run with --build simulator.");
  if (options_.server) remarks.emplace_back("To be run with --server and --authority.");
  const json::Dictionary stored = scenario::storedValues(world_->device);
  if (!stored.empty()) show("stored", {{"values", stored}});
  if (world_->settingsFailure) show("settingsFailed", {{"reason", *world_->settingsFailure}});
  saved_ = SavedScenario(remarks, stored);
}

void Phone::goLive() {
  isReplaying_ = false;
  endIfRaised();
  applyAirplaneMode();
  // From here on a person answers the prompt.
  if (!world_->isDecided) world_->device.authorization.reset();
  flush();
}

void Phone::play(const Line& line) {
  perform(line);
  deliverWaiting();
  flush();
}

void Phone::receive(Arrive notification) {
  world_->waiting.push_back(std::move(notification));
  deliverWaiting();
  flush();
}

void Phone::deliverWaiting() {
  while (!world_->isPrompting && !world_->waiting.empty()) {
    const Arrive next = std::move(world_->waiting.front());
    world_->waiting.pop_front();
    perform(next);
  }
}

void Phone::record(const json::Dictionary& line) {
  add(json::write(line));
  flush();
}

std::optional<std::string> Phone::token() const {
  const auto& token = world_->device.facts.token;
  return token ? std::optional(base::hexadecimal(*token)) : std::nullopt;
}

bool Phone::isPrompting() const {
  return world_->isPrompting;
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
  world_->refusals = 0;
  world_->player->play(step);
  if (world_->isPrompting) world_->player->goOn();

  saved_.add(step, add(step.text()));
  tokens_.change(world_->device.facts.token);
  saved_.took(answers - std::min(answers, world_->waitingAnswers()), world_->refusals);
  if (step.name() == "relaunch") world_->hasEnded = false;
  if (step.name() == "authorization") world_->isDecided = true;
  if (userInfo != nullptr) reportOversize(*userInfo);
  if (isBehind && isArrival(step)) notify(*userInfo);
  for (const device::Event& event : world_->device.record.take()) recordEvent(event, userInfo);
  reportSettingsFailure();
  world_->isPrompting = world_->player->isStopped();
  if (world_->isPrompting) {
    show("prompt");
    saved_.waits();
  }
  if (!isReplaying_) endIfRaised();
}

void Phone::makeReadyFor(const scenario::Step& step) {
  if (world_->isPrompting && step.name() != "authorization") refuseBeforeAnswer();
  if (step.needs() != scenario::Needs::runningApplication) return endIfRaised();
  if (world_->hasEnded && !isReplaying_) {
    throw NotNow(R"(the application has ended; {"do":"relaunch"} starts it)");
  }
  world_->raised.reset();
  world_->hasEnded = false;
}

void Phone::recordEvent(const device::Event& event, const json::Dictionary* userInfo) {
  add(json::write(event));
  const auto kind = event.find("event");
  if (kind == event.end()) return;
  if (kind->second == json::Value("authorizationRequested")) world_->isDecided = true;
  if (kind->second == json::Value("raised")) world_->raised = *event.at("selector").get<std::string>();
  if (kind->second == json::Value("presented") && userInfo != nullptr) {
    present(*event.at("options").get<std::int64_t>(), *userInfo);
  }
}

void Phone::reportOversize(const json::Dictionary& userInfo) {
  const std::size_t bytes = json::write(userInfo).size();
  if (bytes <= device::kLargestPayload) return;
  show("oversized", {{"bytes", std::uint64_t{bytes}}, {"largest", std::uint64_t{device::kLargestPayload}}});
}

void Phone::reportSettingsFailure() {
  if (world_->settingsFailure) return;
  world_->settingsFailure = world_->device.settingsFailure();
  if (world_->settingsFailure) show("settingsFailed", {{"reason", *world_->settingsFailure}});
}

void Phone::perform(const Act& act) {
  if (world_->isPrompting) refuseBeforeAnswer();
  endIfRaised();
  std::visit([this](const auto& one) { perform(one); }, act);
}

void Phone::perform(const End& act) {
  if (world_->hasEnded) throw NotNow(R"(the application has ended already; {"do":"relaunch"} starts it)");
  record(act);
  end(nullptr);
}

void Phone::perform(const AirplaneMode& act) {
  record(act);
  world_->isInAirplaneMode = act.on;
  applyAirplaneMode();
  if (act.on || !world_->kept) return;
  const Arrive kept = *std::exchange(world_->kept, std::nullopt);
  if (kept.expires && *kept.expires <= secondsSince1970()) return;
  reach(kept);
}

void Phone::applyAirplaneMode() {
  // With the embedded server, the answers in a replay already refuse what failed in airplane mode.
  world_->device.network.setAirplaneMode(world_->isInAirplaneMode && (!isReplaying_ || serverIsElsewhere()));
}

void Phone::perform(const Arrive& act) {
  if (world_->isInAirplaneMode) {
    record(act);
    world_->kept = act;
    return;
  }
  if (world_->hasEnded) record(act);
  reach(act);
}

void Phone::perform(const Remove& act) {
  if (!world_->list.remove(act.notification)) {
    if (isReplaying_) return;  // a notification that replaced it has removed it
    throw NotNow("notification " + std::to_string(act.notification) + " is not in the list");
  }
  record(act);
  show("unlisted", {{"notification", act.notification}});
}

void Phone::reach(const Arrive& notification) {
  world_->collapseId = notification.collapseId;
  if (world_->hasEnded) {
    reportOversize(notification.userInfo);
    notify(notification.userInfo);
  } else if (!isReplaying_) {  // a replay contains the resulting steps
    perform(scenario::readStep({{"do", "deliver"}, {"userInfo", notification.userInfo}}));
    if (!world_->hasEnded) perform(scenario::readStep({{"do", "settle"}}));
  }
  world_->collapseId.reset();
}

void Phone::notify(const json::Dictionary& userInfo) {
  if (!mayNotify()) return;
  if (device::hasTextToShow(userInfo)) list("listed", userInfo);
  setBadge(userInfo);
}

void Phone::present(std::int64_t options, const json::Dictionary& userInfo) {
  if ((options & kAlert) != 0 && mayNotify() && device::hasTextToShow(userInfo)) list("banner", userInfo);
}

void Phone::list(const char* how, const json::Dictionary& userInfo) {
  if (const auto earlier = world_->list.find(world_->collapseId)) perform(Remove{*earlier});
  show(how, {{"notification", world_->list.add(world_->collapseId)}, {"userInfo", userInfo}});
}

void Phone::setBadge(const json::Dictionary& userInfo) {
  const auto badge = device::effectsInBackground(userInfo).badge;
  if (badge) show("badge", {{"number", *badge}});
}

void Phone::endIfRaised() {
  if (world_->raised) end(*world_->raised);
}

void Phone::end(json::Value selector) {
  world_->hasEnded = true;
  world_->raised.reset();
  show("ended", {{"selector", std::move(selector)}});
}

void Phone::show(const char* what, json::Dictionary more) {
  more.emplace("screen", what);
  add(json::write(more));
}

void Phone::record(const Act& act) {
  saved_.add(act, add(textOf(act)));
}

SharedText Phone::add(std::string line) {
  return unpublished_.emplace_back(share(std::move(line)));
}

void Phone::flush() {
  if (!unpublished_.empty()) transcript_.append(std::exchange(unpublished_, {}));
}

bool Phone::mayNotify() const {
  return world_->isDecided && world_->device.authorization && world_->device.authorization->granted;
}

}  // namespace quorvantis::phone
