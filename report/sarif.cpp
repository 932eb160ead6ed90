#include "report/sarif.h"

#include <algorithm>
#include <utility>

#include "base/ascii.h"
#include "base/hexadecimal.h"
#include "console/wording.h"
#include "json/read.h"
#include "json/write.h"

namespace quorvantis::report {

namespace {

using json::Array;
using json::Dictionary;
using json::Value;

Value message(const std::string& text) {
  return Dictionary{{"text", text}};
}

/// A path as a URI reference: one from the root of files, or one relative to where the tool was run.
std::string uriOf(const std::string& file) {
  std::string uri = file.starts_with('/') ? "file://" : "";
  for (const char c : file == "-" ? std::string("standard input") : file) {
    const bool isPlain =
        base::isLetter(c) || base::isDigit(c) || std::string_view("-._~/").find(c) != std::string_view::npos;
    uri += isPlain ? std::string(1, c) : '%' + base::hexadecimal({&c, 1});
  }
  return uri;
}

Value artifact(const std::string& file) {
  return Dictionary{{"uri", uriOf(file)}};
}

Value region(const json::Place& begin, const json::Place& end) {
  return Dictionary{{"startLine", begin.line},
                    {"startColumn", begin.column},
                    {"endLine", end.line},
                    {"endColumn", end.column}};
}

Array only(Value element) {
  Array array;
  array.emplace_back(std::move(element));
  return array;
}

Value location(const std::string& file, const lint::Finding& finding) {
  Dictionary physical{{"artifactLocation", artifact(file)}, {"region", region(finding.place, finding.end)}};
  Dictionary location{{"physicalLocation", std::move(physical)}};
  if (!finding.path.empty()) {
    Dictionary logical{{"fullyQualifiedName", console::printable(finding.path)}, {"kind", "member"}};
    location.emplace("logicalLocations", only(std::move(logical)));
  }
  return location;
}

Value fix(const std::string& file, const lint::Finding& finding, std::string_view text) {
  Array replacements;
  for (const lint::Edit& edit : finding.edits) {
    const auto place = [&](std::size_t offset) { return json::placeOf(text, offset); };
    Dictionary replacement{{"deletedRegion", region(place(edit.range.begin), place(edit.range.end))}};
    replacement.emplace("insertedContent", message(edit.text));
    replacements.emplace_back(std::move(replacement));
  }
  Dictionary change{{"artifactLocation", artifact(file)}, {"replacements", std::move(replacements)}};
  return Dictionary{{"description", message(finding.remedy)}, {"artifactChanges", only(std::move(change))}};
}

std::ptrdiff_t indexOf(const lint::Rule& rule) {
  return &rule - lint::kRules.data();
}

Value result(const std::string& file, const lint::Finding& finding, std::string_view text) {
  Dictionary result{{"ruleId", finding.rule->code},
                    {"ruleIndex", indexOf(*finding.rule)},
                    {"level", lint::nameOf(finding.rule->severity)},
                    {"message", message(finding.message + ". " + finding.consequence + ' ' + finding.remedy)},
                    {"locations", only(location(file, finding))}};
  if (!finding.edits.empty()) result.emplace("fixes", only(fix(file, finding, text)));
  return result;
}

std::string withoutBackticks(std::string_view markdown) {
  std::string text(markdown);
  text.erase(std::remove(text.begin(), text.end(), '`'), text.end());
  return text;
}

/// Up to the full stop of the first sentence.
std::string firstSentenceOf(const std::string& help) {
  return help.substr(0, help.find(". ")) + (help.find(". ") != std::string::npos ? "." : "");
}

Value describe(const lint::Rule& rule) {
  const std::string help = withoutBackticks(rule.help) + '.';
  return Dictionary{{"id", rule.code},
                    {"shortDescription", message(firstSentenceOf(help))},
                    {"fullDescription", message(help)},
                    {"help", Dictionary{{"text", help}, {"markdown", std::string(rule.help) + '.'}}},
                    {"defaultConfiguration", Dictionary{{"level", lint::nameOf(rule.severity)}}}};
}

Array notification(const std::string& file, const char* level, const std::string& text) {
  Dictionary physical{{"artifactLocation", artifact(file)}};
  Dictionary location{{"physicalLocation", std::move(physical)}};
  return only(
      Dictionary{{"level", level}, {"message", message(text)}, {"locations", only(std::move(location))}});
}

}  // namespace

Array sarifResults(const std::string& file, const PayloadReport& report) {
  Array results;
  for (const lint::Finding& finding : report.findings.shown)
    results.push_back(result(file, finding, report.text));
  return results;
}

Array sarifNotifications(const std::string& file, const PayloadReport& report) {
  if (!report.problem.empty()) {
    return notification(file, "error", report.file + " can't be read: " + report.problem);
  }
  if (report.findings.leftOut == 0) return {};
  return notification(
      file, "note",
      console::counted(report.findings.leftOut, "more finding") + " in " + report.file + " left out");
}

std::string sarifLog(const std::string& version, const std::string& results, const std::string& notifications,
                     bool isComplete) {
  Array rules;
  for (const lint::Rule& rule : lint::kRules) rules.push_back(describe(rule));
  const Dictionary driver{{"name", "quorvantis-push"},
                          {"version", version},
                          {"informationUri", "https://www.quorvantis.com"},
                          {"rules", std::move(rules)}};
  return R"({"$schema":"https://json.schemastore.org/sarif-2.1.0.json","version":"2.1.0","runs":[{"tool":{"driver":)" +
         json::write(driver) +
         R"(},"columnKind":"unicodeCodePoints","invocations":[{"executionSuccessful":)" +
         (isComplete ? "true" : "false") + R"(,"toolExecutionNotifications":[)" + notifications +
         R"(]}],"results":[)" + results + "]}]}";
}

}  // namespace quorvantis::report
