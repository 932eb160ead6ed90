#include "tool/payload_command.h"

#include <exception>
#include <iostream>

#include "json/write.h"
#include "tool/payload_report.h"
#include "tool/payload_report_json.h"
#include "tool/payload_report_text.h"

namespace quorvantis::tool {

namespace {

int statusOf(const PayloadTotals& totals) {
  if (totals.unreadable != 0) return 2;
  return totals.errors != 0 ? 1 : 0;
}

PayloadTotals reportAsJson(const PayloadOptions& options) {
  PayloadTotals totals;
  json::Array reports;
  for (const std::string& file : options.files) {
    const PayloadReport report = reportOn(file, options.systemVersion);
    totals.add(report);
    reports.push_back(jsonOf(report));
  }
  std::cout << json::write(jsonOf(options.systemVersion, std::move(reports), totals)) << '\n';
  return totals;
}

PayloadTotals reportAsText(const PayloadOptions& options) {
  const Terminal terminal = Terminal::ofStandardOutput();
  PayloadTotals totals;
  for (const std::string& file : options.files) {
    const PayloadReport report = reportOn(file, options.systemVersion);
    totals.add(report);
    print(report, terminal, std::cout);
    std::cout.flush();
  }
  if (totals.files > 1) print(totals, terminal, std::cout);
  return totals;
}

}  // namespace

int explainPayloads(const PayloadOptions& options) {
  constexpr int kFailed = 3;
  try {
    const PayloadTotals totals = options.asJson ? reportAsJson(options) : reportAsText(options);
    if (!std::cout.flush()) return kFailed;
    return statusOf(totals);
  } catch (const std::exception& error) {
    std::cout.flush();
    std::cerr << "quorvantis-push: " << error.what() << '\n';
    return kFailed;
  }
}

}  // namespace quorvantis::tool
