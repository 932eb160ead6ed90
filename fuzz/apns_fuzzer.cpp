// A file for the payload command: read, judged, explained and reported.
#include <algorithm>
#include <cstdint>
#include <sstream>

#include "fuzz/check.h"
#include "fuzz/json_mutator.h"
#include "json/read.h"
#include "json/write.h"
#include "report/json.h"
#include "report/payload_report.h"
#include "report/text.h"

namespace quorvantis::fuzz {

namespace {

using lint::Explained;
using lint::Finding;
using report::PayloadReport;

PayloadReport reportOn(const std::string& text) {
  return report::explained(report::checkText(text), text.size() % 2 == 0 ? "17.0" : "12.4");
}

/// Findings predict exactly the payloads that end the application.
void checkRaises(const PayloadReport& report) {
  if (report.explanation.empty() || report.findings.leftOut != 0) return;
  const bool predicted = std::any_of(report.findings.shown.begin(), report.findings.shown.end(),
                                     [](const Finding& finding) { return finding.endsApplication; });
  const bool raised = std::any_of(report.explanation.begin(), report.explanation.end(),
                                  [](const Explained& explained) { return explained.outcome.raised; });
  check(predicted == raised, "a finding predicts every raise");
}

void checkFindings(const std::string& text, const PayloadReport& report) {
  for (const Finding& finding : report.findings.shown) {
    check(finding.place.line >= 1 && finding.place.column >= 1 && finding.place.column <= text.size() + 1,
          "a finding has a place in the text");
    check(!finding.rule->code.empty() && !finding.message.empty() && !finding.remedy.empty(),
          "a finding says what it is and how to mend it");
  }
  for (const Finding& finding : report.findings.shown) {
    std::string mended = text;
    std::size_t behind = text.size();
    for (auto edit = finding.edits.rbegin(); edit != finding.edits.rend(); ++edit) {
      check(edit->range.begin <= edit->range.end && edit->range.end <= behind, "edits stand apart, in order");
      behind = edit->range.begin;
      mended.replace(edit->range.begin, edit->range.end - edit->range.begin, edit->text);
    }
    const bool wasReadable = finding.rule->code != "not-json";
    check(!wasReadable || finding.edits.empty() || std::holds_alternative<json::Value>(json::read(mended)),
          "what is mended is JSON");
  }
  const bool isReadable = std::holds_alternative<json::Value>(json::read(text));
  check(isReadable || report.findings.errors != 0, "what is no JSON is an error");
}

void checkText(const PayloadReport& report) {
  std::ostringstream text;
  report::print(report, console::Terminal(80, false), text);
  const std::string printed = text.str();
  check(std::none_of(printed.begin(), printed.end(),
                     [](char c) { return (c >= 0 && c < ' ' && c != '\n') || c == 0x7F; }),
        "nothing in a report drives the terminal");
}

void checkDocument(const PayloadReport& report) {
  const std::string document = json::write(report::jsonOf(report));
  const auto read = json::read(document);
  const auto* value = std::get_if<json::Value>(&read);
  check(value != nullptr && json::write(*value) == document, "the document is JSON");
}

}  // namespace

}  // namespace quorvantis::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quorvantis::fuzz;
  const std::string text(reinterpret_cast<const char*>(data), size);
  const PayloadReport report = reportOn(text);
  checkFindings(text, report);
  checkRaises(report);
  checkText(report);
  checkDocument(report);
  return 0;
}
