#include "lint/report.h"

#include <utility>

#include "console/wording.h"
#include "lint/document.h"
#include "lint/source.h"

namespace quorvantis::lint {

namespace {

/// Payloads beyond what Apple's service carries are explained up to here, for those who are about to shorten
/// them.
constexpr std::size_t kLargestExplained = 16 * kLargestPayload;

}  // namespace

PayloadReport reportOn(const std::string& file, const std::string& systemVersion) {
  PayloadSource source = readPayloadSource(file);
  PayloadReport report;
  if (source.problem.empty()) {
    report = reportOnText(std::move(source.bytes), systemVersion);
  } else {
    report.problem = std::move(source.problem);
  }
  report.file = file == "-" ? "standard input" : console::harmless(file);
  return report;
}

PayloadReport reportOnText(std::string text, const std::string& systemVersion) {
  PayloadReport report;
  const PayloadDocument document(std::move(text));
  report.text = document.text();
  report.bytes = document.size();
  report.isForSimulator = document.isForSimulator();
  report.findings = findIn(document);
  const auto* payload = document.value().get<json::Dictionary>();
  if (payload == nullptr) return report;
  report.isOnlyChecked = report.bytes > kLargestExplained;
  if (!report.isOnlyChecked) report.explanation = explain(*payload, systemVersion);
  return report;
}

void PayloadTotals::add(const PayloadReport& report) {
  ++files;
  if (!report.problem.empty()) ++unreadable;
  errors += report.findings.errors;
  warnings += report.findings.warnings;
  notes += report.findings.notes;
}

}  // namespace quorvantis::lint
