#include "report/payload_report.h"

#include <utility>

#include "lint/document/document.h"
#include "report/source.h"

namespace quorvantis::report {

namespace {

/// Payloads that are too large for Apple's service are still explained up to this size, since they may be
/// shortened.
constexpr std::size_t kLargestExplained = 16 * device::kLargestPayload;

}  // namespace

bool PayloadReport::isOnlyChecked() const {
  return payload && bytes > kLargestExplained;
}

PayloadReport checkFile(const std::string& file) {
  console::Input source = readPayload(file);
  PayloadReport report;
  if (source.problem.empty()) {
    report = checkText(std::move(source.bytes));
  } else {
    report.problem = std::move(source.problem);
  }
  report.file = console::nameOfInput(file);
  return report;
}

PayloadReport checkText(std::string text) {
  PayloadReport report;
  const lint::PayloadDocument document(std::move(text));
  report.text = document.text();
  report.bytes = document.size();
  report.isForSimulator = document.isForSimulator();
  report.findings = lint::findIn(document);
  if (const auto* payload = document.value().get<json::Dictionary>()) report.payload = *payload;
  return report;
}

PayloadReport explained(PayloadReport report, const std::string& systemVersion) {
  if (report.payload && !report.isOnlyChecked())
    report.explanation = lint::explain(*report.payload, systemVersion);
  return report;
}

std::size_t PayloadTotals::atLeast(lint::Severity severity) const {
  switch (severity) {
    case lint::Severity::error:
      return errors;
    case lint::Severity::warning:
      return errors + warnings;
    case lint::Severity::note:
      return errors + warnings + notes;
  }
  return 0;
}

void PayloadTotals::add(const PayloadReport& report) {
  ++files;
  if (!report.problem.empty()) ++unreadable;
  errors += report.findings.errors;
  warnings += report.findings.warnings;
  notes += report.findings.notes;
}

void PayloadTotals::add(const PayloadTotals& more) {
  files += more.files;
  unreadable += more.unreadable;
  errors += more.errors;
  warnings += more.warnings;
  notes += more.notes;
}

}  // namespace quorvantis::report
