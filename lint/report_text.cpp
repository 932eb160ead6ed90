#include "lint/report_text.h"

#include <string>

#include "console/wording.h"
#include "lint/explanation_text.h"
#include "lint/printer.h"
#include "lint/words.h"

namespace quorvantis::lint {

namespace {

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

void printFinding(const PayloadReport& report, const Finding& finding, Printer& printer) {
  const std::string place = report.file + ':' + std::to_string(finding.place.line) + ':' +
                            std::to_string(finding.place.column) + ": ";
  const console::Terminal& terminal = printer.terminal();
  printer.line(place + terminal.styled(styleOf(finding.rule->severity), nameOf(finding.rule->severity)) +
               ": " + console::printable(finding.message) + ' ' +
               terminal.styled(console::Style::dim, "[" + std::string(finding.rule->code) + "]"));
  if (!finding.path.empty()) printer.labelled(4, "at", console::printable(finding.path));
  printer.paragraph(4, console::printable(finding.consequence));
  printer.labelled(4, "Fix:", console::printable(finding.remedy));
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
  if (report.isOnlyChecked()) {
    printer.paragraph(kSituationIndent, "Too large for the simulated phone: it was only checked.");
    printer.line();
  }
  const auto isRefusal = [](const Finding& finding) { return finding.rule == &rules::tooLarge; };
  for (const Finding& finding : report.findings.shown) {
    if (!isRefusal(finding)) continue;
    printFinding(report, finding, printer);
    printer.line();
    if (!report.explanation.empty()) printer.paragraph(kSituationIndent, "If it were delivered:");
  }
  print(report.explanation, printer);
  for (const Finding& finding : report.findings.shown) {
    if (!isRefusal(finding)) printFinding(report, finding, printer);
  }
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
