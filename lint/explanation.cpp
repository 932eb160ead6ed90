#include "lint/explanation.h"

#include <algorithm>
#include <memory>

#include "notifications/payload_keys.h"
#include "scenario/player.h"

namespace quorvantis::lint {

namespace {

using device::ApplicationState;
using json::Dictionary;

constexpr Situation kSituations[] = {
    {scenario::Arrival::foreground, ApplicationState::active, false},
    {scenario::Arrival::foreground, ApplicationState::active, true},
    {scenario::Arrival::foreground, ApplicationState::inactive, false},
    {scenario::Arrival::foreground, ApplicationState::inactive, true},
    {scenario::Arrival::background, ApplicationState::background, false},
    {scenario::Arrival::background, ApplicationState::background, true},
    {scenario::Arrival::tap, ApplicationState::inactive, false},
    {scenario::Arrival::tap, ApplicationState::inactive, true},
};

/// A phone in one situation, with the library ready for notifications.
class Phone {
 public:
  Phone(const Situation& situation, const std::string& systemVersion)
      : host_(scenario::makeHost(device_)), player_(device_, *host_, nullptr) {
    device_.facts.systemVersion = systemVersion;
    device_.application.state = situation.state;
    // With an error the road ends once the library is the notification center's delegate: no token, no
    // request.
    device_.authorization = {.granted = false, .error = "nobody is asked"};
    host_->setActiveInForeground(situation.foregroundSwitch);
    host_->perform([this] { host_->registerFinish(); });
    player_.settle();
    static_cast<void>(device_.record.take());
  }

  void deliver(scenario::Arrival arrival, const Dictionary& payload) {
    host_->perform([&] { host_->deliver(arrival, payload, scenario::kDefaultAction); });
    player_.settle();
  }

  void tapOK() { play({{"do", "tapOK"}, {"alert", device_.screen.alerts().front()}}); }
  void passOneSecond() { play({{"do", "advance"}, {"seconds", 1}}); }

  [[nodiscard]] bool showsAlert() const { return !device_.screen.alerts().empty(); }

  std::vector<device::Event> takeEvents() {
    if (device_.settingsFailure()) throw device::SettingsError(*device_.settingsFailure());
    return device_.record.take();
  }

 private:
  void play(Dictionary step) { player_.play(scenario::readStep(std::move(step))); }

  device::Device device_;
  std::unique_ptr<scenario::Host> host_;
  scenario::Player player_;
};

void note(const device::Event& event, Outcome::When when, Outcome& outcome) {
  const auto& name = *event.at("event").get<std::string>();
  if (name == "presented") {
    outcome.presented = true;
  } else if (name == "badge") {
    outcome.badge = *event.at("number").get<std::int64_t>();
  } else if (name == "vibrated") {
    outcome.vibrates = true;
  } else if (name == "stored") {
    outcome.stored.emplace_back(*event.at("key").get<std::string>(), event.at("value"));
  } else if (name == "opened") {
    outcome.opened.push_back({event.at("url"), when});
  } else if (name == "raised") {
    outcome.raised = *event.at("selector").get<std::string>();
  } else if (name == "callback") {
    outcome.report = event.at("argument");
  } else if (name == "alertShown") {
    Outcome::Alert alert{event.at("title"), event.at("message"), {}};
    for (const json::Value& button : *event.at("buttons").get<json::Array>()) {
      alert.buttons.push_back(*button.get<std::string>());
    }
    outcome.alert = std::move(alert);
  }
}

void noteAll(std::vector<device::Event> events, Outcome::When when, Outcome& outcome) {
  for (device::Event& event : events) {
    note(event, when, outcome);
    outcome.events.push_back(std::move(event));
  }
}

bool hasLinkThatIsNoText(const Dictionary& payload) {
  const auto aps = payload.find(payload::aps.text());
  const json::Value* link = aps != payload.end() ? aps->second.find(payload::urlnoti.text()) : nullptr;
  return link != nullptr && link->get<std::string>() == nullptr;
}

/// The simulated phone opens something for it; no phone has to.
void leaveUndefined(std::vector<Outcome::Opened>& opened) {
  for (Outcome::Opened& opening : opened) opening = {{}, opening.when, false};
}

Outcome outcomeOf(const Situation& situation, const Dictionary& payload, const std::string& systemVersion) {
  Phone phone(situation, systemVersion);
  Outcome outcome;
  phone.deliver(situation.arrival, payload);
  noteAll(phone.takeEvents(), Outcome::When::atOnce, outcome);
  if (outcome.raised) return outcome;
  if (phone.showsAlert()) {
    phone.tapOK();
    noteAll(phone.takeEvents(), Outcome::When::onOK, outcome);
  }
  phone.passOneSecond();
  noteAll(phone.takeEvents(), Outcome::When::oneSecondLater, outcome);
  return outcome;
}

}  // namespace

std::vector<Explained> explain(const Dictionary& payload, const std::string& systemVersion) {
  std::vector<Explained> all;
  for (const Situation& situation : kSituations) {
    Outcome outcome = outcomeOf(situation, payload, systemVersion);
    if (hasLinkThatIsNoText(payload)) leaveUndefined(outcome.opened);
    const auto same = std::find_if(all.begin(), all.end(), [&](const Explained& explained) {
      return explained.outcome.events == outcome.events &&
             (explained.situations.front().arrival == scenario::Arrival::tap) ==
                 (situation.arrival == scenario::Arrival::tap);
    });
    if (same != all.end()) {
      same->situations.push_back(situation);
    } else {
      all.push_back({{situation}, std::move(outcome)});
    }
  }
  return all;
}

}  // namespace quorvantis::lint
