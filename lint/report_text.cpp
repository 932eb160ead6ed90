#include "lint/report_text.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "console/alert_box.h"
#include "console/wording.h"
#include "json/write.h"
#include "lint/words.h"

namespace quorvantis::lint {

namespace {

using device::ApplicationState;
using json::Value;

constexpr std::size_t kSituationIndent = 2;
constexpr std::size_t kEffectIndent = 6;
constexpr std::size_t kLongestValue = 1000;

console::Style styleOf(Severity severity) {
  switch (severity) {
    case Severity::error:
      return console::Style::red;
    case Severity::warning:
      return console::Style::yellow;
    case Severity::note:
      return console::Style::cyan;
  }
  return console::Style::plain;
}

/// A value in a line; a text stands as it is.
std::string shown(const Value& value) {
  const auto* text = value.get<std::string>();
  return console::harmless(console::shortened(text != nullptr ? *text : json::write(value), kLongestValue));
}

std::string shownInAlert(const Value& value) {
  return value.isNull() ? "" : shown(value);
}

class Printer {
 public:
  Printer(const console::Terminal& terminal, std::ostream& out) : terminal_(terminal), out_(out) {}

  void paragraph(std::size_t indent, std::string_view text, console::Style style = console::Style::plain) {
    for (const std::string& line : console::wrap(text, terminal_.width() - indent)) {
      out_ << std::string(indent, ' ') << terminal_.styled(style, line) << '\n';
    }
  }
  /// What follows the label goes on under itself; where that leaves too little room, in lines of its own.
  void labelled(std::size_t indent, const std::string& label, const std::string& text) {
    constexpr std::size_t kLeastRoom = 20;
    const std::size_t column = indent + console::columns(label) + 1;
    if (column + kLeastRoom > terminal_.width()) {
      paragraph(indent, label, console::Style::dim);
      paragraph(indent + 2, text);
      return;
    }
    bool isFirst = true;
    for (const std::string& line : console::wrap(text, terminal_.width() - column)) {
      out_ << std::string(isFirst ? indent : column, ' ');
      if (isFirst) out_ << terminal_.styled(console::Style::dim, label) << ' ';
      out_ << line << '\n';
      isFirst = false;
    }
  }
  void line(std::string_view text = "") { out_ << text << '\n'; }

  [[nodiscard]] const console::Terminal& terminal() const { return terminal_; }

 private:
  const console::Terminal& terminal_;
  std::ostream& out_;
};

/// What the situations of one arrival have in common: what does not matter is left out.
std::string conditions(const std::vector<Situation>& situations) {
  std::set<std::pair<bool, ApplicationState>> pairs;
  std::set<bool> switches;
  std::set<ApplicationState> states;
  for (const Situation& situation : situations) {
    pairs.emplace(situation.foregroundSwitch, situation.state);
    switches.insert(situation.foregroundSwitch);
    states.insert(situation.state);
  }
  const auto named = [](bool on) { return std::string(", switch ") + (on ? "on" : "off"); };
  const bool hasStates = situations.front().arrival == scenario::Arrival::foreground;
  if (pairs.size() == switches.size() * states.size()) {
    std::string text;
    if (switches.size() == 1) text += named(*switches.begin());
    if (hasStates && states.size() == 1) text += std::string(", application ") + nameOf(*states.begin());
    return text;
  }
  std::string text;
  for (const auto& [on, state] : pairs) {
    text += (text.empty() ? "" : "; or") + named(on) + ", application " + nameOf(state);
  }
  return text;
}

std::vector<std::string> titlesOf(const std::vector<Situation>& situations) {
  static const auto& names = *new std::map<scenario::Arrival, std::string>{
      {scenario::Arrival::foreground, "In the foreground"},
      {scenario::Arrival::background, "In the background, if the system hands it on"},
      {scenario::Arrival::tap, "When it is tapped"}};
  std::map<scenario::Arrival, std::vector<Situation>> byArrival;
  for (const Situation& situation : situations) byArrival[situation.arrival].push_back(situation);
  std::vector<std::string> titles;
  titles.reserve(byArrival.size());
  for (const auto& [arrival, some] : byArrival) titles.push_back(names.at(arrival) + conditions(some));
  return titles;
}

std::string reasonOf(const std::string& selector) {
  if (selector == "objectForKey:") return "the library looked for a key in what is no object";
  if (selector == "isEqualToString:") return "the library compared with a text what is none";
  if (selector == "integerValue") return "the library asked for the whole number of what has none";
  if (selector == "setObject:forKey:") return "the settings take no null";
  return "an object did not understand it";
}

std::string whenOf(Outcome::When when) {
  switch (when) {
    case Outcome::When::atOnce:
      return "Opens at once:";
    case Outcome::When::onOK:
      return "A tap on OK opens";
    case Outcome::When::oneSecondLater:
      return "Opens a second later:";
  }
  return "";
}

std::string addressOf(const Outcome::Opened& opened) {
  if (!opened.isDefined) return "no defined address, since the link is no text";
  return opened.url.isNull() ? "nothing, since the text is no address" : shown(opened.url);
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
  printer.paragraph(kEffectIndent, "The library shows an alert:");
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

void printPresentation(const Explained& explained, Printer& printer) {
  const auto isForeground = [](const Situation& s) { return s.arrival == scenario::Arrival::foreground; };
  const auto& all = explained.situations;
  if (std::none_of(all.begin(), all.end(), isForeground)) return;
  if (explained.outcome.presented) {
    printer.paragraph(kEffectIndent, "The system is told to show it.");
  } else if (std::all_of(all.begin(), all.end(), isForeground)) {
    printer.paragraph(kEffectIndent, "The system is not told to show it.");
  } else {
    printer.paragraph(kEffectIndent, "In the foreground the system is not told to show it.");
  }
}

void printOutcome(const Explained& explained, Printer& printer, Printed& printed) {
  const Outcome& outcome = explained.outcome;
  printPresentation(explained, printer);
  if (outcome.badge) {
    printer.paragraph(kEffectIndent, "The badge becomes " + std::to_string(*outcome.badge) + ".");
  }
  if (outcome.alert) printAlert(*outcome.alert, printer, printed);
  if (outcome.vibrates) printer.paragraph(kEffectIndent, "The phone vibrates.");
  for (const auto& [key, value] : outcome.stored) {
    printer.labelled(kEffectIndent, "Stored: " + key + " =", shown(value));
  }
  for (const Outcome::Opened& opened : outcome.opened) {
    printer.labelled(kEffectIndent, whenOf(opened.when), addressOf(opened));
  }
  if (outcome.report) printReport(*outcome.report, printer, printed);
  if (outcome.raised) {
    printer.paragraph(kEffectIndent,
                      "THE APPLICATION ENDS, at " + *outcome.raised + " (" + reasonOf(*outcome.raised) + ")",
                      console::Style::red);
  }
  if (outcome.events.empty()) printer.paragraph(kEffectIndent, "The library does nothing.");
}

void printExplanation(const PayloadReport& report, Printer& printer) {
  Printed printed;
  for (const Explained& explained : report.explanation) {
    for (const std::string& title : titlesOf(explained.situations)) {
      printer.paragraph(kSituationIndent, title, console::Style::bold);
    }
    printOutcome(explained, printer, printed);
    printer.line();
  }
}

void printFinding(const PayloadReport& report, const Finding& finding, Printer& printer) {
  const std::string place = report.file + ':' + std::to_string(finding.place.line) + ':' +
                            std::to_string(finding.place.column) + ": ";
  const console::Terminal& terminal = printer.terminal();
  printer.line(place + terminal.styled(styleOf(finding.severity), nameOf(finding.severity)) + ": " +
               console::harmless(finding.message) + ' ' +
               terminal.styled(console::Style::dim, "[" + finding.code + "]"));
  if (!finding.path.empty()) printer.labelled(4, "at", console::harmless(finding.path));
  printer.paragraph(4, console::harmless(finding.consequence));
  printer.labelled(4, "Mend:", console::harmless(finding.remedy));
}

std::string sumOf(std::size_t errors, std::size_t warnings, std::size_t notes) {
  if (errors + warnings + notes == 0) return "no findings";
  return console::counted(errors, "error") + ", " + console::counted(warnings, "warning") + ", " +
         console::counted(notes, "note");
}

}  // namespace

void print(const PayloadReport& report, const console::Terminal& terminal, std::ostream& out) {
  Printer printer(terminal, out);
  if (!report.problem.empty()) {
    printer.line(terminal.styled(console::Style::bold, report.file) + ": " +
                 terminal.styled(console::Style::red, "can't be read: " + report.problem));
    printer.line();
    return;
  }
  printer.line(terminal.styled(console::Style::bold, report.file) + ": " + console::grouped(report.bytes) +
               " of " + console::counted(kLargestPayload, "byte") +
               (report.isForSimulator ? ", without \"" + std::string(kSimulatorKey) + '"' : ""));
  printer.line();
  if (report.isOnlyChecked) {
    printer.paragraph(kSituationIndent,
                      "Too large to be delivered to the simulated phone: it was only checked.");
    printer.line();
  }
  printExplanation(report, printer);
  for (const Finding& finding : report.findings.shown) printFinding(report, finding, printer);
  if (report.findings.leftOut != 0) {
    printer.line(console::counted(report.findings.leftOut, "more finding") + " left out.");
  }
  if (report.findings.shown.empty()) printer.line(terminal.styled(console::Style::green, "No findings."));
  printer.line();
}

void print(const PayloadTotals& totals, const console::Terminal& terminal, std::ostream& out) {
  Printer printer(terminal, out);
  std::string text =
      console::counted(totals.files, "file") + ": " + sumOf(totals.errors, totals.warnings, totals.notes);
  if (totals.unreadable != 0) text += "; " + console::grouped(totals.unreadable) + " can't be read";
  const bool isGood = totals.errors + totals.unreadable == 0;
  printer.line(terminal.styled(isGood ? console::Style::green : console::Style::red, text));
}

}  // namespace quorvantis::lint
