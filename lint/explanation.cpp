#include "lint/explanation.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <memory>

#include "lint/judges/link.h"
#include "notifications/payload_keys.h"
#include "scenario/delivery.h"

namespace quorvantis::lint {

namespace {

using device::ApplicationState;
using json::Dictionary;

constexpr std::array kStates{ApplicationState::active, ApplicationState::inactive,
                             ApplicationState::background};

/// A phone in one situation, with the library ready for notifications.
class Phone {
 public:
  Phone(const Situation& situation, const std::string& systemVersion) : host_(scenario::makeHost(device_)) {
    device_.facts.systemVersion = systemVersion;
    device_.application.state = situation.state;
    // With an error the library stops after it has become the notification center's delegate: no token, no
    // request.
    device_.authorization = {.granted = false, .error = "nobody is asked"};
    host_->launch();
    host_->setActiveInForeground(situation.foregroundSwitch);
    host_->perform([this] { host_->registerFinish(); });
    settle();
    static_cast<void>(device_.record.take());
  }
  ~Phone() {
    device_.endProcess();
    host_->terminate();
  }
  Phone(const Phone&) = delete;
  Phone& operator=(const Phone&) = delete;

  void deliver(scenario::Arrival arrival, const Dictionary& payload) {
    host_->perform([&] { host_->deliver(arrival, payload, scenario::kDefaultAction); });
    settle();
  }

  void tapOK() {
    host_->perform([this] { device_.screen.tap(device_.screen.alerts().front()); });
    settle();
  }

  void passOneSecond() { device_.queue.advance(std::chrono::seconds(1), runner()); }

  [[nodiscard]] bool showsAlert() const { return !device_.screen.alerts().empty(); }

  std::vector<device::Event> takeEvents() {
    if (device_.settingsFailure()) throw device::SettingsError(*device_.settingsFailure());
    return device_.record.take();
  }

 private:
  device::MainQueue::Runner runner() {
    return [this](const device::MainQueue::Task& task) { host_->perform(task); };
  }
  void settle() { device_.queue.settle(runner()); }

  device::Device device_;
  std::unique_ptr<scenario::Host> host_;
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
    const json::Value& url = event.at("url");
    const auto* text = url.get<std::string>();
    outcome.opened.push_back({url, when, text != nullptr && linkFrom(*text).problem.empty()});
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

device::SystemEffects effectsOn(const Situation& situation, const Dictionary& payload, bool presented) {
  if (situation.arrival == scenario::Arrival::tap)
    return {device::hasTextToShow(payload), std::nullopt, false};
  if (situation.state == ApplicationState::background) return device::effectsInBackground(payload);
  return {presented && device::hasTextToShow(payload), std::nullopt, false};
}

Outcome outcomeOf(const Situation& situation, const Dictionary& payload, const std::string& systemVersion) {
  Outcome outcome;
  if (situation.arrival) {
    Phone phone(situation, systemVersion);
    phone.deliver(*situation.arrival, payload);
    noteAll(phone.takeEvents(), Outcome::When::onOK, outcome);
    if (!outcome.raised && phone.showsAlert()) {
      phone.tapOK();
      noteAll(phone.takeEvents(), Outcome::When::onOK, outcome);
    }
    if (!outcome.raised) {
      phone.passOneSecond();
      noteAll(phone.takeEvents(), Outcome::When::oneSecondLater, outcome);
    }
  }
  outcome.system = effectsOn(situation, payload, outcome.presented);
  return outcome;
}

/// The calls, if any, that a payload leads to in each state, and a tap.
std::vector<Situation> situationsOf(const Dictionary& payload) {
  std::vector<Situation> situations;
  const auto add = [&](ApplicationState state, std::optional<scenario::Arrival> arrival) {
    for (const bool foregroundSwitch : {false, true})
      situations.push_back({state, arrival, foregroundSwitch});
  };
  for (const ApplicationState state : kStates) {
    const std::vector<scenario::Arrival> arrivals = scenario::arrivalsOf(payload, state);
    for (const scenario::Arrival arrival : arrivals) add(state, arrival);
    if (arrivals.empty()) add(state, std::nullopt);
  }
  add(ApplicationState::inactive, scenario::Arrival::tap);
  std::stable_sort(situations.begin(), situations.end(),
                   [](const Situation& a, const Situation& b) { return momentOf(a) < momentOf(b); });
  return situations;
}

/// Of a payload that is not for the application: the same in every state.
Explained explainWithoutApplication(const Dictionary& payload, std::string_view act) {
  Explained explained;
  for (const ApplicationState state : kStates) {
    for (const bool foregroundSwitch : {false, true})
      explained.situations.push_back({state, std::nullopt, foregroundSwitch});
  }
  explained.outcome.bySystemItself = act;
  const auto aps = payload.find(payload::aps.text());
  explained.outcome.system.showsAlert =
      aps != payload.end() && aps->second.find(payload::alert.text()) != nullptr;
  return explained;
}

bool isSame(const Explained& explained, const Situation& situation, const Outcome& outcome) {
  return momentOf(explained.situations.front()) == momentOf(situation) &&
         explained.outcome.system == outcome.system && explained.outcome.events == outcome.events;
}

}  // namespace

Moment momentOf(const Situation& situation) {
  if (situation.arrival == scenario::Arrival::tap) return Moment::tap;
  if (situation.state == ApplicationState::background) return Moment::background;
  if (!situation.arrival) return Moment::never;
  return situation.arrival == scenario::Arrival::foreground ? Moment::foreground : Moment::secondCall;
}

std::vector<Explained> explain(const Dictionary& payload, const std::string& systemVersion) {
  const std::string_view act = device::actBySystemItself(payload);
  if (!act.empty()) return {explainWithoutApplication(payload, act)};
  std::vector<Explained> all;
  for (const Situation& situation : situationsOf(payload)) {
    Outcome outcome = outcomeOf(situation, payload, systemVersion);
    const auto same = std::find_if(all.begin(), all.end(), [&](const Explained& explained) {
      return isSame(explained, situation, outcome);
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
