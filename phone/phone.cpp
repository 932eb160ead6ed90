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

/// As the provider's service says when it expires: once it is sent, only the phone's clock counts.
Arrive dated(Arrive act) {
  if (act.expires && !act.expiresIn)
    act.expiresIn = std::max<std::int64_t>(0, *act.expires - secondsSince1970());
  return act;
}

/// A device token that this one is not, of the same length: the next number.
std::string tokenAfter(std::string token) {
  for (auto byte = token.rbegin(); byte != token.rend(); ++byte) {
    *byte = static_cast<char>(static_cast<unsigned char>(*byte) + 1);
    if (*byte != 0) break;
  }
  return token;
}

json::Dictionary state(device::ApplicationState state) {
  return {{"do", "application"}, {"state", scenario::nameOf(state)}};
}

const json::Dictionary* userInfoOf(const scenario::Step& step) {
  const json::Value* userInfo = step.find("userInfo");
  return userInfo == nullptr ? nullptr : userInfo->get<json::Dictionary>();
}

double secondsIn(const scenario::Step& step) {
  const json::Value& seconds = *step.find("seconds");
  const auto* const whole = seconds.get<std::int64_t>();
  return whole != nullptr ? static_cast<double>(*whole) : *seconds.get<double>();
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
  bool isInstalled = true;
  bool isRegistered = false;                        // whether the system gave the application its token
  double clock = 0;                                 // seconds that have passed
  json::Dictionary code = {};                       // what the application does when it is launched
  std::optional<json::Value> activation = {};       // and then
  std::optional<std::string> raised = {};           // the exception that ends the application
  std::size_t refusals = 0;                         // of requests in airplane mode, during this step
  std::optional<std::string> settingsFailure = {};  // why they can no longer be kept

  NotificationList list;
  CollapseId collapseId = {};  // of the notification that is being delivered
  struct Kept {
    Arrive notification;
    double since;
  };
  std::optional<Kept> kept = {};  // the last one that came in airplane mode
  std::deque<Arrive> waiting;     // until the prompt is answered
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
      checkRoom();
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
  hasWarned_ = false;
  transcript_.begin(start_ + '-' + std::to_string(++phones_));

  std::vector<std::string> remarks{"Saved by quorvantis-push phone, version " + options_.version + "."};
  if (options_.build == device::Build::simulator) remarks.emplace_back("To be run with --build simulator.");
  if (options_.server) remarks.emplace_back("To be run with --server and --authority.");
  const json::Dictionary stored = scenario::storedValues(world_->device);
  // An earlier process of the application has stored the token that it got.
  world_->isRegistered = std::any_of(stored.begin(), stored.end(), [&](const auto& one) {
    return token() && one.second == json::Value(*token());
  });
  tokens_.begin(registeredToken());
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

std::optional<std::size_t> Phone::waitingForAnswer() const {
  return isPromptOnScreen_ ? std::optional<std::size_t>(waiting_) : std::nullopt;
}

void Phone::checkRoom() const {
  if (!transcript_.isFull()) return;
  const Limits& limits = transcript_.limits();
  throw Full("the phone is full: it may have " + std::to_string(limits.lines) + " lines or " +
             std::to_string(limits.bytes >> 20) +
             " MiB of text. Save the session, begin a fresh phone, or start one with --most-lines and "
             "--most-mebibytes");
}

void Phone::warnWhenNearlyFull() {
  const Transcript::Size size = transcript_.size();
  const Limits& limits = transcript_.limits();
  if (hasWarned_ || (size.lines < limits.lines * 9 / 10 && size.bytes < limits.bytes * 9 / 10)) return;
  hasWarned_ = true;
  show("nearlyFull", {{"lines", std::uint64_t{size.lines}},
                      {"mostLines", std::uint64_t{limits.lines}},
                      {"bytes", std::uint64_t{size.bytes}},
                      {"mostBytes", std::uint64_t{limits.bytes}}});
  transcript_.append(std::exchange(unpublished_, {}));
}

void Phone::play(const Line& line) {
  checkRoom();
  perform(line);
  deliverWaiting();
  flush();
}

void Phone::receive(Arrive notification) {
  world_->waiting.push_back(dated(std::move(notification)));
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
  if (transcript_.isFull()) return;
  add(json::write(line));
  flush();
}

std::optional<std::string> Phone::token() const {
  const auto& token = world_->device.facts.token;
  return token ? std::optional(base::hexadecimal(*token)) : std::nullopt;
}

json::Dictionary Phone::keptValues() const {
  return options_.settings.empty() ? json::Dictionary() : scenario::storedValues(world_->device);
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
  saved_.took(answers - std::min(answers, world_->waitingAnswers()), world_->refusals);
  if (step.name() == "relaunch") world_->hasEnded = false;
  if (step.name() == "authorization") world_->isDecided = true;
  if (userInfo != nullptr) reportOversize(*userInfo);
  if (isBehind && isArrival(step)) notify(*userInfo);
  for (const device::Event& event : world_->device.record.take()) recordEvent(event, userInfo);
  noteRegistration(step);
  noteCode(step);
  if (step.name() == "advance") world_->clock += secondsIn(step);
  reportSettingsFailure();
  world_->isPrompting = world_->player->isStopped();
  if (world_->isPrompting) {
    show("prompt");
    saved_.waits();
  }
  if (!isReplaying_) endIfRaised();
}

/// After a step: it may also have given the phone another token.
void Phone::noteRegistration(const scenario::Step& step) {
  const json::Value* const given = step.name() == "deliverToken" ? step.find("hex") : nullptr;
  const auto token = given == nullptr ? std::nullopt : base::bytesFromHexadecimal(*given->get<std::string>());
  if (token && token == world_->device.facts.token) world_->isRegistered = true;
  tokens_.change(registeredToken());
}

void Phone::noteCode(const scenario::Step& step) {
  if (step.name() == "relaunch") {
    world_->code.clear();
    world_->activation.reset();
  } else if (step.name() == "activate") {
    world_->activation = *step.find("value");
  } else if (step.name() == "host") {
    for (auto& [key, value] : scenario::readObject(step.text())) world_->code.insert_or_assign(key, value);
  }
}

std::optional<std::string> Phone::registeredToken() const {
  return world_->isRegistered ? world_->device.facts.token : std::nullopt;
}

void Phone::makeReadyFor(const scenario::Step& step) {
  if (world_->isPrompting && step.name() != "authorization") refuseBeforeAnswer();
  const bool needsApplication =
      step.needs() == scenario::Needs::runningApplication || step.name() == "relaunch";
  if (needsApplication && !world_->isInstalled && !isReplaying_) {
    throw NotNow(R"(the application is not installed; {"phone":"install"} installs it)");
  }
  if (step.needs() != scenario::Needs::runningApplication) return endIfRaised();
  if (world_->hasEnded && !isReplaying_) {
    throw NotNow(R"(the application has ended; {"do":"relaunch"} starts it)");
  }
  if (world_->hasEnded) show("goesOn");
  world_->raised.reset();
  world_->hasEnded = false;
}

void Phone::recordEvent(const device::Event& event, const json::Dictionary* userInfo) {
  add(json::write(event));
  const auto kind = event.find("event");
  if (kind == event.end()) return;
  if (kind->second == json::Value("authorizationRequested")) world_->isDecided = true;
  if (kind->second == json::Value("registerForRemoteNotifications")) world_->isRegistered = true;
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
  const World::Kept kept = *std::exchange(world_->kept, std::nullopt);
  const Arrive& notification = kept.notification;
  if (notification.expiresIn) {
    if (world_->clock - kept.since >= static_cast<double>(*notification.expiresIn)) return;
  } else if (notification.expires && *notification.expires <= secondsSince1970()) {
    return;  // a session that was saved by an earlier version
  }
  reach(notification);
}

void Phone::applyAirplaneMode() {
  // With the embedded server, the answers in a replay already refuse what failed in airplane mode.
  world_->device.network.setAirplaneMode(world_->isInAirplaneMode && (!isReplaying_ || serverIsElsewhere()));
}

void Phone::perform(const Arrive& given) {
  const Arrive act = isReplaying_ ? given : dated(given);
  if (world_->isInAirplaneMode || !world_->isInstalled) {
    record(act);
    if (world_->isInstalled) world_->kept = World::Kept{act, world_->clock};
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

void Phone::perform(const Tap& act) {
  const SharedText line = world_->list.lineOf(act.notification);
  if (!line) {
    throw NotNow("notification " + std::to_string(act.notification) + " is not in the list");
  }
  const json::Dictionary shown = scenario::readObject(*line);
  record(act);
  world_->list.remove(act.notification);
  show("unlisted", {{"notification", act.notification}});
  if (isReplaying_) return;  // a replay contains the resulting steps

  using enum device::ApplicationState;
  json::Array steps;
  const bool comesToFront = world_->hasEnded || world_->device.application.state != active;
  if (comesToFront) steps.push_back(state(inactive));
  if (world_->hasEnded) {
    steps.push_back(json::Dictionary{{"do", "relaunch"}});
    if (!world_->code.empty()) steps.push_back(world_->code);
    if (world_->activation)
      steps.push_back(json::Dictionary{{"do", "activate"}, {"value", *world_->activation}});
    steps.push_back(json::Dictionary{{"do", "settle"}});
  }
  json::Dictionary tapped{{"do", "notification"}, {"arrives", "tap"}, {"userInfo", shown.at("userInfo")}};
  if (act.action) tapped.emplace("action", *act.action);
  steps.push_back(std::move(tapped));
  if (comesToFront) steps.push_back(state(active));
  steps.push_back(json::Dictionary{{"do", "settle"}});
  steps.push_back(json::Dictionary{{"do", "advance"}, {"seconds", 1}});  // a link opens a second later
  performAll(steps);
}

/// As far as the application lives, and nobody has to answer.
void Phone::performAll(const json::Array& steps) {
  for (const json::Value& line : steps) {
    const scenario::Step step = scenario::readStep(*line.get<json::Dictionary>());
    const bool hasEnded = step.needs() == scenario::Needs::runningApplication && world_->hasEnded;
    if (hasEnded || world_->isPrompting) return;
    perform(step);
  }
}

void Phone::perform(const Uninstall& act) {
  if (!world_->isInstalled)
    throw NotNow(R"(the application is not installed; {"phone":"install"} installs it)");
  record(act);
  if (!world_->hasEnded) end(nullptr);
  for (const std::int64_t number : world_->list.numbers()) {
    world_->list.remove(number);
    show("unlisted", {{"notification", number}});
  }
  show("badge", {{"number", 0}});
  world_->isInstalled = world_->isRegistered = world_->isDecided = false;
  world_->kept.reset();
  tokens_.change(registeredToken());
  if (isReplaying_) return;
  world_->device.authorization.reset();
  json::Array keys;
  for (const auto& [key, value] : scenario::storedValues(world_->device)) keys.emplace_back(key);
  if (!keys.empty()) perform(scenario::readStep({{"do", "store"}, {"remove", std::move(keys)}}));
}

void Phone::perform(const Install& act) {
  if (world_->isInstalled) throw NotNow("the application is installed");
  record(act);
  world_->isInstalled = true;
  auto token = world_->device.facts.token;
  if (isReplaying_ || !token) return;
  do {
    token = tokenAfter(*token);
  } while (tokens_.find(*token));
  perform(scenario::readStep({{"do", "device"}, {"token", base::hexadecimal(*token)}}));
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
  world_->list.add(world_->collapseId,
                   show(how, {{"notification", world_->list.next()}, {"userInfo", userInfo}}));
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

SharedText Phone::show(const char* what, json::Dictionary more) {
  more.emplace("screen", what);
  return add(json::write(more));
}

void Phone::record(const Act& act) {
  saved_.add(act, add(textOf(act)));
}

SharedText Phone::add(std::string line) {
  return unpublished_.emplace_back(share(std::move(line)));
}

void Phone::flush() {
  waiting_ = world_->waiting.size();
  isPromptOnScreen_ = world_->isPrompting;
  if (unpublished_.empty()) return;
  transcript_.append(std::exchange(unpublished_, {}));
  warnWhenNearlyFull();
}

bool Phone::mayNotify() const {
  return world_->isDecided && world_->device.authorization && world_->device.authorization->granted;
}

}  // namespace quorvantis::phone
