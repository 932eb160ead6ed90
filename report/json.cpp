#include "report/json.h"

#include <optional>
#include <utility>

#include "device/remote_notification.h"
#include "json/write.h"
#include "lint/sentences.h"
#include "scenario/names.h"

namespace quorvantis::report {

namespace {

using json::Array;
using json::Dictionary;
using json::Value;

Value jsonOf(const lint::Finding& finding, std::string_view text) {
  const auto units = [&](std::size_t offset) { return lint::utf16Length(text, offset); };
  Array edits;
  for (const lint::Edit& edit : finding.edits) {
    edits.emplace_back(
        Dictionary{{"from", units(edit.range.begin)}, {"to", units(edit.range.end)}, {"text", edit.text}});
  }
  return Dictionary{{"code", finding.rule->code},
                    {"severity", lint::nameOf(finding.rule->severity)},
                    {"endsApplication", finding.endsApplication},
                    {"path", finding.path},
                    {"line", finding.place.line},
                    {"column", finding.place.column},
                    {"endLine", finding.end.line},
                    {"endColumn", finding.end.column},
                    {"from", units(finding.range.begin)},
                    {"to", units(finding.range.end)},
                    {"message", finding.message},
                    {"consequence", finding.consequence},
                    {"remedy", finding.remedy},
                    {"edits", std::move(edits)}};
}

Value jsonOf(const lint::Situation& situation) {
  return Dictionary{{"arrives", situation.arrival ? Value(scenario::nameOf(*situation.arrival)) : Value()},
                    {"applicationState", scenario::nameOf(situation.state)},
                    {"foregroundSwitch", situation.foregroundSwitch}};
}

Value jsonOf(const lint::Outcome::Opened& opened) {
  return Dictionary{{"url", opened.url},
                    {"when", opened.when == lint::Outcome::When::onOK ? "onOK" : "oneSecondLater"},
                    {"opens", opened.opens}};
}

Value jsonOf(const lint::Outcome::Alert& alert) {
  return Dictionary{{"title", alert.title},
                    {"message", alert.message},
                    {"buttons", Array(alert.buttons.begin(), alert.buttons.end())}};
}

Value jsonOf(const device::SystemEffects& system) {
  return Dictionary{{"showsAlert", system.showsAlert},
                    {"badge", system.badge ? Value(*system.badge) : Value()},
                    {"playsSound", system.playsSound}};
}

const char* nameOf(lint::Sentence::About about) {
  switch (about) {
    case lint::Sentence::About::alert:
      return "alert";
    case lint::Sentence::About::report:
      return "report";
    case lint::Sentence::About::end:
      return "end";
    case lint::Sentence::About::other:
      return "other";
  }
  return "";
}

Value jsonOf(const lint::Sentence& sentence) {
  const std::string value = sentence.value.empty() ? "" : ' ' + sentence.value;
  return Dictionary{{"about", nameOf(sentence.about)}, {"text", sentence.text + value}};
}

Value jsonOf(const lint::Explained& explained);

template <class T>
Array arrayOf(const std::vector<T>& all) {
  Array array;
  for (const T& one : all) array.push_back(jsonOf(one));
  return array;
}

Value jsonOf(const lint::Explained& explained) {
  const lint::Outcome& outcome = explained.outcome;
  return Dictionary{{"title", lint::titleOf(explained)},
                    {"sentences", arrayOf(lint::sentencesOf(explained))},
                    {"situations", arrayOf(explained.situations)},
                    {"events", Array(outcome.events.begin(), outcome.events.end())},
                    {"system", jsonOf(outcome.system)},
                    {"presented", outcome.presented},
                    {"badge", outcome.badge ? Value(*outcome.badge) : Value()},
                    {"alert", outcome.alert ? jsonOf(*outcome.alert) : Value()},
                    {"vibrates", outcome.vibrates},
                    {"stored", Dictionary(outcome.stored.begin(), outcome.stored.end())},
                    {"opened", arrayOf(outcome.opened)},
                    {"reported", outcome.report.has_value()},
                    {"report", outcome.report.value_or(Value())},
                    {"raised", outcome.raised ? Value(*outcome.raised) : Value()}};
}

}  // namespace

Value jsonOf(const PayloadReport& report) {
  if (!report.problem.empty()) return Dictionary{{"file", report.file}, {"problem", report.problem}};
  const std::optional<std::string> footnote = lint::footnoteOf(report.explanation);
  Array findings;
  for (const lint::Finding& finding : report.findings.shown) findings.push_back(jsonOf(finding, report.text));
  return Dictionary{{"file", report.file},
                    {"problem", Value()},
                    {"bytes", report.bytes},
                    {"largest", device::kLargestPayload},
                    {"findings", std::move(findings)},
                    {"findingsLeftOut", report.findings.leftOut},
                    {"outcomes", arrayOf(report.explanation)},
                    {"footnote", footnote ? Value(*footnote) : Value()}};
}

std::string jsonReport(const std::string& version, const std::string& systemVersion,
                       const std::string& reports, const PayloadTotals& totals) {
  const Dictionary summary{{"files", totals.files},
                           {"unreadable", totals.unreadable},
                           {"errors", totals.errors},
                           {"warnings", totals.warnings},
                           {"notes", totals.notes}};
  return R"({"files":[)" + reports + R"(],"summary":)" + json::write(summary) + R"(,"systemVersion":)" +
         json::write(systemVersion) + R"(,"tool":)" +
         json::write(Dictionary{{"name", "quorvantis-push"}, {"version", version}}) + '}';
}

}  // namespace quorvantis::report
