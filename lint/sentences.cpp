#include "lint/sentences.h"

#include <algorithm>
#include <set>
#include <utility>

#include "console/wording.h"
#include "json/write.h"
#include "scenario/names.h"

namespace quorvantis::lint {

namespace {

using About = Sentence::About;

/// The values that a condition takes in the situations, where not every one of both leads to the same.
template <class T>
std::set<T> valuesOf(const std::vector<Situation>& situations, T Situation::*condition) {
  std::set<T> values;
  for (const Situation& situation : situations) values.insert(situation.*condition);
  return values;
}

bool dependsOnSwitch(const Explained& explained) {
  return valuesOf(explained.situations, &Situation::foregroundSwitch).size() == 1;
}

std::string reasonOf(const std::string& selector) {
  if (selector == "objectForKey:") return "the library looked for a key in something that is not an object";
  if (selector == "isEqualToString:") return "the library compared something that is not a string with one";
  if (selector == "integerValue")
    return "the library asked for a whole number, and got null, an array or an object";
  if (selector == "length") return "the library made an address of something that is not a string";
  return "the settings can't store null";
}

Sentence sentenceOn(const Outcome::Opened& opened) {
  const std::string when = opened.when == Outcome::When::onOK ? "A tap on OK" : "A second later it";
  if (opened.opens) return {About::other, when + " opens", shown(opened.url)};
  const std::string asks = when + " asks the system to open";
  if (opened.url.isNull())
    return {About::other, asks + " nil, since the text is not an address: nothing opens."};
  return {About::other, asks + ' ' + shown(opened.url) + ", which it can't open."};
}

std::string shownBySystem(const device::SystemEffects& system) {
  std::vector<std::string> effects;
  if (system.showsAlert) effects.emplace_back("shows the notification");
  if (system.badge) effects.push_back("sets the badge to " + std::to_string(*system.badge));
  if (system.playsSound) effects.emplace_back("plays its sound");
  if (effects.empty()) return "The system shows nothing.";
  return "The system by itself " + console::joined(effects, " and ") + ".";
}

/// What comes before the library has a say.
std::vector<std::string> beforehand(const Explained& explained) {
  const Outcome& outcome = explained.outcome;
  const Situation& situation = explained.situations.front();
  const std::string secondCall =
      std::string(device::kBackgroundCall) + "; if the host passes that on to the library:";
  switch (momentOf(situation)) {
    case Moment::foreground:
      if (!outcome.presented) return {"The system is not told to show it."};
      return {outcome.system.showsAlert ? "The system is told to show it."
                                        : "The system is told to show it, but it has no text."};
    case Moment::secondCall:
      return {"The system also calls " + secondCall};
    case Moment::background:
      return {shownBySystem(outcome.system),
              situation.arrival
                  ? "It wakes the application and calls " + secondCall
                  : "The library is not called before a tap, and on a tap it only handles a link."};
    case Moment::tap:
      return {outcome.system.showsAlert ? "The application opens." : "There is nothing to tap."};
    case Moment::never:
      return {"The system " + std::string(outcome.bySystemItself) +
                  (outcome.system.showsAlert ? ", and shows its alert." : "."),
              "The library has no part in it, and the application is not called."};
  }
  return {};
}

bool isIdle(const Explained& explained) {
  const Outcome& outcome = explained.outcome;
  const auto arrival = explained.situations.front().arrival;
  const bool isHeardOf = arrival && (arrival != scenario::Arrival::tap || outcome.system.showsAlert);
  return isHeardOf && outcome.events.size() == (outcome.presented ? 1 : 0);
}

}  // namespace

std::string titleOf(const Explained& explained) {
  const std::vector<Situation>& situations = explained.situations;
  const Moment moment = momentOf(situations.front());
  std::string title;
  switch (moment) {
    case Moment::foreground:
      title = "In the foreground";
      break;
    case Moment::secondCall:
      title = "In the foreground, by the second call";
      break;
    case Moment::background:
      title = "In the background";
      break;
    case Moment::tap:
      title = "When it is tapped";
      break;
    case Moment::never:
      title = "In every state";
      break;
  }
  const bool isInFront = moment == Moment::foreground || moment == Moment::secondCall;
  if (dependsOnSwitch(explained)) {
    title += std::string(", switch ") + (situations.front().foregroundSwitch ? "on" : "off");
  }
  if (isInFront && valuesOf(situations, &Situation::state).size() == 1) {
    title += std::string(", application ") + scenario::nameOf(situations.front().state);
  }
  return title;
}

std::vector<Sentence> sentencesOf(const Explained& explained) {
  const Outcome& outcome = explained.outcome;
  std::vector<Sentence> sentences;
  const auto say = [&](std::string text, std::string value = "") {
    sentences.push_back({About::other, std::move(text), std::move(value)});
  };
  for (std::string& text : beforehand(explained)) say(std::move(text));
  if (outcome.badge) say("The badge becomes " + std::to_string(*outcome.badge) + ".");
  if (outcome.alert) {
    sentences.push_back(
        {About::alert, "The library shows an alert (not on the screen of an application that has scenes):"});
  }
  if (outcome.vibrates) say("The phone vibrates.");
  for (const auto& [key, value] : outcome.stored) say("Stored: " + key + " =", shown(value));
  for (const Outcome::Opened& opened : outcome.opened) sentences.push_back(sentenceOn(opened));
  if (outcome.report) sentences.push_back({About::report, "The host gets onReceiveNotification: with"});
  if (outcome.raised) {
    sentences.push_back({About::end, std::string("THE APPLICATION ENDS") +
                                         (outcome.alert ? " with a tap on OK" : "") + ", at " +
                                         *outcome.raised + " (" + reasonOf(*outcome.raised) + ")"});
  }
  if (isIdle(explained)) say("The library does nothing.");
  return sentences;
}

std::optional<std::string> footnoteOf(const std::vector<Explained>& explanation) {
  if (std::none_of(explanation.begin(), explanation.end(), dependsOnSwitch)) return std::nullopt;
  return "\"switch\" is the value of activePushNotificationsInForegroundApp:, which is off by default.";
}

std::string shown(const json::Value& value) {
  constexpr std::size_t kLongest = 1000;
  const auto* text = value.get<std::string>();
  return console::printable(console::shortened(text != nullptr ? *text : json::write(value), kLongest));
}

}  // namespace quorvantis::lint
