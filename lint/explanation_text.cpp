#include "lint/explanation_text.h"

#include <optional>
#include <set>
#include <string>

#include "console/alert_box.h"
#include "console/wording.h"
#include "json/write.h"
#include "lint/words.h"
#include "scenario/names.h"

namespace quorvantis::lint {

namespace {

using json::Value;

constexpr std::size_t kEffectIndent = 6;
constexpr std::size_t kLongestValue = 1000;
/// A value in a line; a string without its quotation marks.
std::string shown(const Value& value) {
  const auto* text = value.get<std::string>();
  return console::printable(console::shortened(text != nullptr ? *text : json::write(value), kLongestValue));
}

std::string shownInAlert(const Value& value) {
  return value.isNull() ? "" : shown(value);
}

/// The values that a condition takes in the situations, where not every one of both leads to the same.
template <class T>
std::set<T> valuesOf(const std::vector<Situation>& situations, T Situation::*condition) {
  std::set<T> values;
  for (const Situation& situation : situations) values.insert(situation.*condition);
  return values;
}

bool dependsOnSwitch(const std::vector<Situation>& situations) {
  return valuesOf(situations, &Situation::foregroundSwitch).size() == 1;
}

std::string titleOf(const std::vector<Situation>& situations) {
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
  }
  const bool isInFront = moment == Moment::foreground || moment == Moment::secondCall;
  if (dependsOnSwitch(situations)) {
    title += std::string(", switch ") + (situations.front().foregroundSwitch ? "on" : "off");
  }
  if (isInFront && valuesOf(situations, &Situation::state).size() == 1) {
    title += std::string(", application ") + scenario::nameOf(situations.front().state);
  }
  return title;
}

std::string reasonOf(const std::string& selector) {
  if (selector == "objectForKey:") return "the library looked for a key in something that is not an object";
  if (selector == "isEqualToString:") return "the library compared something that is not a string with one";
  if (selector == "integerValue")
    return "the library asked for a whole number, and got null, an array or an object";
  return "the settings can't store null";
}

void printOpened(const Outcome::Opened& opened, Printer& printer) {
  const std::string when = opened.when == Outcome::When::onOK ? "A tap on OK" : "A second later it";
  if (opened.opens) return printer.labelled(kEffectIndent, when + " opens", shown(opened.url));
  const std::string asks = when + " asks the system to open";
  if (!opened.isDefined) {
    printer.paragraph(kEffectIndent,
                      asks + " something that is not defined, since the link is not a string.");
  } else if (opened.url.isNull()) {
    printer.paragraph(kEffectIndent, asks + " nil, since the text is not an address: nothing opens.");
  } else {
    printer.paragraph(kEffectIndent, asks + ' ' + shown(opened.url) + ", which it can't open.");
  }
}

/// What was printed already need not be printed again.
struct Printed {
  std::optional<Value> report;
  std::vector<std::string> alert;
};

void printAlert(const Outcome::Alert& alert, Printer& printer, Printed& printed) {
  constexpr std::size_t kBoxIndent = kEffectIndent + 2;
  const std::vector<std::string> box =
      console::alertBox(shownInAlert(alert.title), shownInAlert(alert.message), alert.buttons,
                        printer.terminal().width() - kBoxIndent);
  if (box == printed.alert) {
    printer.paragraph(kEffectIndent, "The library shows the same alert.");
    return;
  }
  printer.paragraph(kEffectIndent,
                    "The library shows an alert (not on the screen of an application that has scenes):");
  for (const std::string& row : box) printer.line(std::string(kBoxIndent, ' ') + row);
  printed.alert = box;
}

void printReport(const Value& report, Printer& printer, Printed& printed) {
  if (report == printed.report) {
    printer.paragraph(kEffectIndent, "The host gets the same report.");
    return;
  }
  printer.paragraph(kEffectIndent, "The host gets onReceiveNotification: with");
  printer.paragraph(kEffectIndent + 2, shown(report));
  printed.report = report;
}

std::string shownBySystem(const SystemEffects& system) {
  std::vector<std::string> effects;
  if (system.showsAlert) effects.emplace_back("shows the notification");
  if (system.badge) effects.push_back("sets the badge to " + std::to_string(*system.badge));
  if (system.playsSound) effects.emplace_back("plays its sound");
  std::string text;
  for (std::size_t i = 0; i < effects.size(); ++i) {
    const bool isLast = i + 1 == effects.size();
    text += (i == 0 ? "" : isLast ? " and " : ", ") + effects[i];
  }
  return text;
}

/// What comes before the library has a say.
void printSystem(const Explained& explained, Printer& printer) {
  const Outcome& outcome = explained.outcome;
  const Situation& situation = explained.situations.front();
  const std::string effects = shownBySystem(outcome.system);
  switch (momentOf(situation)) {
    case Moment::foreground:
      printer.paragraph(kEffectIndent, !outcome.presented ? "The system is not told to show it."
                                       : outcome.system.showsAlert
                                           ? "The system is told to show it."
                                           : "The system is told to show it, but it has no text.");
      return;
    case Moment::secondCall:
      printer.paragraph(kEffectIndent, std::string("The system also calls ") + kSecondCall +
                                           "; if the host passes that on to the library:");
      return;
    case Moment::background:
      printer.paragraph(kEffectIndent, effects.empty() ? "The system shows nothing."
                                                       : "The system by itself " + effects + ".");
      printer.paragraph(kEffectIndent,
                        situation.arrival
                            ? std::string("It wakes the application and calls ") + kSecondCall +
                                  "; if the host passes that on to the library:"
                            : "The library is not called before a tap, and on a tap it only handles a link.");
      return;
    case Moment::tap:
      printer.paragraph(kEffectIndent,
                        outcome.system.showsAlert ? "The application opens." : "There is nothing to tap.");
      return;
  }
}

void printOutcome(const Explained& explained, Printer& printer, Printed& printed) {
  const Outcome& outcome = explained.outcome;
  printSystem(explained, printer);
  if (outcome.badge) {
    printer.paragraph(kEffectIndent, "The badge becomes " + std::to_string(*outcome.badge) + ".");
  }
  if (outcome.alert) printAlert(*outcome.alert, printer, printed);
  if (outcome.vibrates) printer.paragraph(kEffectIndent, "The phone vibrates.");
  for (const auto& [key, value] : outcome.stored) {
    printer.labelled(kEffectIndent, "Stored: " + key + " =", shown(value));
  }
  for (const Outcome::Opened& opened : outcome.opened) printOpened(opened, printer);
  if (outcome.report) printReport(*outcome.report, printer, printed);
  if (outcome.raised) {
    printer.paragraph(kEffectIndent,
                      "THE APPLICATION ENDS, at " + *outcome.raised + " (" + reasonOf(*outcome.raised) + ")",
                      console::Style::red);
  }
  const Situation& situation = explained.situations.front();
  const bool isHeardOf =
      situation.arrival && (situation.arrival != scenario::Arrival::tap || outcome.system.showsAlert);
  const bool isIdle = outcome.events.size() == (outcome.presented ? 1 : 0);
  if (isHeardOf && isIdle) printer.paragraph(kEffectIndent, "The library does nothing.");
}

}  // namespace

void print(const std::vector<Explained>& explanation, Printer& printer) {
  Printed printed;
  bool hasSwitch = false;
  for (const Explained& explained : explanation) {
    printer.paragraph(kSituationIndent, titleOf(explained.situations), console::Style::bold);
    printOutcome(explained, printer, printed);
    printer.line();
    hasSwitch = hasSwitch || dependsOnSwitch(explained.situations);
  }
  if (!hasSwitch) return;
  printer.paragraph(
      kSituationIndent,
      "\"switch\" is the value of activePushNotificationsInForegroundApp:, which is off by default.",
      console::Style::dim);
  printer.line();
}

}  // namespace quorvantis::lint
