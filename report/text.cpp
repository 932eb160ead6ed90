#include "report/text.h"

#include <optional>
#include <string>

#include "console/alert_box.h"
#include "console/wording.h"
#include "lint/sentences.h"
#include "report/printer.h"

namespace quorvantis::report {

namespace {

constexpr std::size_t kSituationIndent = 2;
constexpr std::size_t kEffectIndent = 6;

/// What was printed already need not be printed again.
struct Printed {
  std::optional<json::Value> report;
  std::vector<std::string> alert;
};

std::string shownInAlert(const json::Value& value) {
  return value.isNull() ? "" : lint::shown(value);
}

void printAlert(const std::string& text, const lint::Outcome::Alert& alert, Printer& printer,
                Printed& printed) {
  constexpr std::size_t kBoxIndent = kEffectIndent + 2;
  const std::vector<std::string> box =
      console::alertBox(shownInAlert(alert.title), shownInAlert(alert.message), alert.buttons,
                        printer.terminal().width() - kBoxIndent);
  if (box == printed.alert) {
    printer.paragraph(kEffectIndent, "The library shows the same alert.");
    return;
  }
  printer.paragraph(kEffectIndent, text);
  for (const std::string& row : box) printer.line(std::string(kBoxIndent, ' ') + row);
  printed.alert = box;
}

void printReport(const std::string& text, const json::Value& report, Printer& printer, Printed& printed) {
  if (report == printed.report) {
    printer.paragraph(kEffectIndent, "The host gets the same report.");
    return;
  }
  printer.paragraph(kEffectIndent, text);
  printer.paragraph(kEffectIndent + 2, lint::shown(report));
  printed.report = report;
}

void printSentence(const lint::Sentence& sentence, const lint::Outcome& outcome, Printer& printer,
                   Printed& printed) {
  switch (sentence.about) {
    case lint::Sentence::About::alert:
      return printAlert(sentence.text, *outcome.alert, printer, printed);
    case lint::Sentence::About::report:
      return printReport(sentence.text, *outcome.report, printer, printed);
    case lint::Sentence::About::end:
      return printer.paragraph(kEffectIndent, sentence.text, console::Style::red);
    case lint::Sentence::About::other:
      if (!sentence.value.empty()) return printer.labelled(kEffectIndent, sentence.text, sentence.value);
      return printer.paragraph(kEffectIndent, sentence.text);
  }
}

void printExplanation(const std::vector<lint::Explained>& explanation, Printer& printer) {
  Printed printed;
  for (const lint::Explained& explained : explanation) {
    printer.paragraph(kSituationIndent, lint::titleOf(explained), console::Style::bold);
    for (const lint::Sentence& sentence : lint::sentencesOf(explained))
      printSentence(sentence, explained.outcome, printer, printed);
    printer.line();
  }
  const std::optional<std::string> footnote = lint::footnoteOf(explanation);
  if (!footnote) return;
  printer.paragraph(kSituationIndent, *footnote, console::Style::dim);
  printer.line();
}

console::Style styleOf(lint::Severity severity) {
  switch (severity) {
    case lint::Severity::error:
      return console::Style::red;
    case lint::Severity::warning:
      return console::Style::yellow;
    case lint::Severity::note:
      return console::Style::cyan;
  }
  return console::Style::plain;
}

void printFinding(const PayloadReport& report, const lint::Finding& finding, Printer& printer) {
  const std::string place = report.file + ':' + std::to_string(finding.place.line) + ':' +
                            std::to_string(finding.place.column) + ": ";
  const console::Terminal& terminal = printer.terminal();
  printer.line(place +
               terminal.styled(styleOf(finding.rule->severity), lint::nameOf(finding.rule->severity)) + ": " +
               console::printable(finding.message) + ' ' +
               terminal.styled(console::Style::dim, "[" + std::string(finding.rule->code) + "]"));
  if (!finding.path.empty()) printer.labelled(4, "at", console::printable(finding.path));
  printer.paragraph(4, console::printable(finding.consequence));
  printer.labelled(4, "Fix:", console::printable(finding.remedy));
}

void printProblem(const PayloadReport& report, Printer& printer) {
  const console::Terminal& terminal = printer.terminal();
  printer.line(terminal.styled(console::Style::bold, report.file) + ": " +
               terminal.styled(console::Style::red, "can't be read: " + report.problem));
}

void printLeftOut(const PayloadReport& report, Printer& printer) {
  if (report.findings.leftOut == 0) return;
  printer.line(console::counted(report.findings.leftOut, "more finding") + " left out.");
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
    printProblem(report, printer);
    printer.line();
    return;
  }
  printer.line(terminal.styled(console::Style::bold, report.file) + ": " + console::grouped(report.bytes) +
               " of " + console::counted(device::kLargestPayload, "byte") +
               (report.isForSimulator ? ", without \"" + std::string(lint::kSimulatorKey) + '"' : ""));
  printer.line();
  if (report.isOnlyChecked()) {
    printer.paragraph(kSituationIndent, "Too large for the simulated phone: it was only checked.");
    printer.line();
  }
  for (const lint::Finding& finding : report.findings.shown) {
    if (!finding.rule->isRefusal) continue;
    printFinding(report, finding, printer);
    printer.line();
    if (!report.explanation.empty()) printer.paragraph(kSituationIndent, "If it were delivered:");
  }
  printExplanation(report.explanation, printer);
  for (const lint::Finding& finding : report.findings.shown) {
    if (!finding.rule->isRefusal) printFinding(report, finding, printer);
  }
  printLeftOut(report, printer);
  if (report.findings.shown.empty()) printer.line(terminal.styled(console::Style::green, "No findings."));
  printer.line();
}

void printFindings(const PayloadReport& report, const console::Terminal& terminal, std::ostream& out) {
  Printer printer(terminal, out);
  if (!report.problem.empty()) printProblem(report, printer);
  for (const lint::Finding& finding : report.findings.shown) printFinding(report, finding, printer);
  printLeftOut(report, printer);
}

void print(const PayloadTotals& totals, const console::Terminal& terminal, std::ostream& out) {
  Printer printer(terminal, out);
  std::string text =
      console::counted(totals.files, "file") + ": " + sumOf(totals.errors, totals.warnings, totals.notes);
  if (totals.unreadable != 0) text += "; " + console::grouped(totals.unreadable) + " can't be read";
  const bool isGood = totals.errors + totals.unreadable == 0;
  printer.line(terminal.styled(isGood ? console::Style::green : console::Style::red, text));
}

}  // namespace quorvantis::report
