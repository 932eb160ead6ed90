// A payload, delivered in every way and in every state to the library on a simulated device.
#include <algorithm>
#include <array>
#include <cstdint>

#include "fuzz/json_mutator.h"
#include "fuzz/phone.h"
#include "json/read.h"

namespace quorvantis::fuzz {

namespace {

using device::ApplicationState;
using device::Build;
using device::Event;
using json::Dictionary;
using json::Value;
using scenario::Arrival;

struct Situation {
  Build build;
  Arrival arrival;
  ApplicationState state;
  bool foregroundSwitch;
  bool canOpenURL;
};

/// The parts of a payload that the library looks at; nullptr for what is not there.
struct Payload {
  explicit Payload(const Dictionary& itsUserInfo) : userInfo(itsUserInfo) {
    const auto entry = userInfo.find("aps");
    if (entry == userInfo.end()) return;
    aps = &entry->second;
    alert = aps->find("alert");
    type = aps->find("type");
  }

  [[nodiscard]] const Value* inAps(std::string_view key) const {
    return aps == nullptr ? nullptr : aps->find(key);
  }
  /// Only a notification with an alert has a type that counts.
  [[nodiscard]] bool isOfType(std::string_view name) const {
    return alert != nullptr && type != nullptr && *type == Value(name);
  }
  [[nodiscard]] bool opensURL() const { return isOfType("pushlib-abrirurl") && inAps("urlnoti") != nullptr; }
  [[nodiscard]] bool vibrates() const {
    return isOfType("pushlib-normal") || isOfType("pushlib-abrirapp") || isOfType("pushlib-abrirurl");
  }

  const Dictionary& userInfo;
  const Value* aps = nullptr;
  const Value* alert = nullptr;
  const Value* type = nullptr;
};

std::size_t count(const std::vector<Event>& events, std::string_view name) {
  return static_cast<std::size_t>(std::count_if(
      events.begin(), events.end(), [&](const Event& event) { return textOf(event, "event") == name; }));
}

bool raisedIn(const std::vector<Event>& events) {
  const std::size_t raised = count(events, "raised");
  check(raised == 0 || (raised == 1 && textOf(events.back(), "event") == "raised"), "a raise ends it");
  return raised != 0;
}

/// The reported values are the payload's own.
void checkReport(const Payload& payload, const Event& event) {
  check(textOf(event, "selector") == "onReceiveNotification:", "only a notification is reported");
  const auto* report = event.at("argument").get<Dictionary>();
  check(report != nullptr, "a report is a dictionary");
  check(payload.aps != nullptr || report->empty(), "a report without aps is empty");
  const bool isSilent = payload.aps != nullptr && payload.alert == nullptr;
  check(isSilent ==
            (report->contains("type") && report->at("type") == Value("silent") && !report->contains("alert")),
        "what comes without an alert is reported as silent");
  for (const auto& [key, value] : *report) {
    if (isSilent && key == "type") continue;
    const bool isMoved = isSilent && key == "customType" && payload.type != nullptr && value == *payload.type;
    const Value* original = payload.inAps(key);
    check(isMoved || (original != nullptr && value == *original), "a report holds the payload's values");
  }
  if (isSilent) {
    const std::size_t moved = payload.type != nullptr && payload.inAps("customType") == nullptr ? 1 : 0;
    const std::size_t own = payload.type == nullptr ? 1 : 0;
    check(report->size() == payload.aps->get<Dictionary>()->size() + own + moved,
          "all of a silent notification is reported");
  }
}

/// An extra goes under its own key, as it is.
void checkStored(const Payload& payload, const Event& event) {
  constexpr std::string_view kPrefix = "pushExtra";
  const std::string_view key = textOf(event, "key");
  check(
      key.size() == kPrefix.size() + 1 && key.starts_with(kPrefix) && key.back() >= '1' && key.back() <= '5',
      "only the extras' keys are written");
  const Value* extra = payload.inAps(std::string("extra") + key.back());
  check(extra != nullptr && event.at("value") == *extra, "an extra is stored as it came");
}

void checkEffects(const Situation& situation, const Payload& payload, const std::vector<Event>& events) {
  const bool raised = raisedIn(events);
  const bool isPresented = situation.arrival == Arrival::foreground && situation.foregroundSwitch;
  check(count(events, "presented") == (isPresented ? 1 : 0), "presented by the switch alone");
  check(!isPresented || textOf(events.front(), "event") == "presented", "presented first");

  const bool reachesHandler = situation.arrival == Arrival::background ||
                              (situation.arrival == Arrival::foreground && payload.aps != nullptr &&
                               payload.inAps("content-available") == nullptr);
  const bool isHandled = situation.build == Build::device && reachesHandler;
  const std::size_t reports = count(events, "callback");
  check(isHandled ? reports + (raised ? 1 : 0) == 1 : reports == 0, "one report or a raise, where handled");

  const auto expect = [&](std::string_view name, bool isDue) {
    const std::size_t happened = count(events, name);
    const std::size_t due = isHandled && isDue ? 1 : 0;
    check(raised ? happened <= due : happened == due, name.data());
  };
  expect("badge", payload.alert != nullptr && payload.inAps("badge") != nullptr);
  expect("vibrated", situation.foregroundSwitch && payload.vibrates());
  expect("alertShown", situation.state == ApplicationState::active && payload.opensURL());
  expect("synchronized", payload.isOfType("pushlib-extras"));

  for (const Event& event : events) {
    const std::string_view name = textOf(event, "event");
    if (name == "callback") checkReport(payload, event);
    if (name == "stored") {
      check(isHandled && payload.isOfType("pushlib-extras"), "only the type for extras stores");
      checkStored(payload, event);
    }
    check(name == "callback" || name == "stored" || name == "presented" || name == "badge" ||
              name == "vibrated" || name == "alertShown" || name == "synchronized" || name == "raised",
          "nothing else happens");
  }
}

void checkAfterOK(const Situation& situation, const std::vector<Event>& events) {
  if (raisedIn(events)) return check(events.size() == 1, "a raise at OK opens nothing");
  check(count(events, "opened") == (situation.canOpenURL ? 1 : 0), "OK opens the link");
  check(count(events, "alertHidden") == 1, "OK hides the window");
}

void deliver(Phone& phone, Arrival arrival, const Dictionary& userInfo) {
  phone.host->perform([&] { phone.host->deliver(arrival, userInfo, scenario::kDefaultAction); });
  phone.settle();
}

void checkStillWorks(Phone& phone) {
  static const Dictionary good{{"aps", Dictionary{{"alert", Dictionary{{"title", "t"}}}, {"badge", 3}}}};
  const Situation situation{phone.device.build, Arrival::background, phone.device.application.state, false,
                            true};
  deliver(phone, situation.arrival, good);
  const std::vector<Event> events = phone.takeEvents();
  check(!raisedIn(events), "a good payload is handled after a bad one");
  checkEffects(situation, Payload(good), events);
}

void deliverIn(const Situation& situation, const Payload& payload) {
  Phone& phone = Phone::shared();
  phone.device.build = situation.build;
  phone.device.application.state = situation.state;
  phone.device.application.canOpenURL = situation.canOpenURL;
  phone.host->setActiveInForeground(situation.foregroundSwitch);

  deliver(phone, situation.arrival, payload.userInfo);
  const std::vector<Event> events = phone.takeEvents();
  checkEffects(situation, payload, events);

  for (const int alert : phone.device.screen.alerts()) {
    phone.host->perform([&] { phone.device.screen.tap(alert); });
    checkAfterOK(situation, phone.takeEvents());
  }
  check(phone.device.screen.alerts().empty(), "OK dismisses an alert");

  const bool opensLater = situation.arrival == Arrival::tap && payload.opensURL() && situation.canOpenURL;
  phone.advance(std::chrono::nanoseconds(999'999'999));
  check(phone.takeEvents().empty(), "nothing opens before a second has passed");
  phone.advance(std::chrono::nanoseconds(1));
  const std::vector<Event> later = phone.takeEvents();
  const bool isRaised = raisedIn(events);
  check(count(later, "opened") == later.size() && later.size() == (opensLater && !isRaised ? 1 : 0),
        "a tap opens its link a second later");
  if (isRaised) checkStillWorks(phone);
}

}  // namespace

}  // namespace quorvantis::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quorvantis;
  using namespace quorvantis::fuzz;
  const auto read = json::read({reinterpret_cast<const char*>(data), size});
  const auto* value = std::get_if<json::Value>(&read);
  const auto* userInfo = value == nullptr ? nullptr : value->get<json::Dictionary>();
  if (userInfo == nullptr) return 0;

  Phone::shared().relaunch();
  const Payload payload(*userInfo);
  for (const Arrival arrival : {Arrival::foreground, Arrival::background, Arrival::tap}) {
    for (const auto state :
         {ApplicationState::active, ApplicationState::inactive, ApplicationState::background}) {
      for (const bool foregroundSwitch : {false, true}) {
        for (const bool canOpenURL : {false, true}) {
          deliverIn({Build::device, arrival, state, foregroundSwitch, canOpenURL}, payload);
        }
        deliverIn({Build::simulator, arrival, state, foregroundSwitch, true}, payload);
      }
    }
  }
  return 0;
}
