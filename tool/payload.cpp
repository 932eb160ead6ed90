#include "tool/payload.h"

#include <exception>
#include <iostream>

#include "json/write.h"
#include "lint/report.h"
#include "lint/report_json.h"
#include "lint/report_text.h"

namespace quorvantis::tool {

namespace {

int statusOf(const lint::PayloadTotals& totals) {
  if (totals.unreadable != 0) return 2;
  return totals.errors != 0 ? 1 : 0;
}

lint::PayloadTotals reportAsJson(const PayloadOptions& options) {
  lint::PayloadTotals totals;
  json::Array reports;
  for (const std::string& file : options.files) {
    const lint::PayloadReport report = lint::reportOn(file, options.systemVersion);
    totals.add(report);
    reports.push_back(lint::jsonOf(report));
  }
  std::cout << json::write(lint::jsonOf(options.systemVersion, std::move(reports), totals)) << '\n';
  return totals;
}

lint::PayloadTotals reportAsText(const PayloadOptions& options) {
  const console::Terminal terminal = console::Terminal::ofStandardOutput();
  lint::PayloadTotals totals;
  for (const std::string& file : options.files) {
    const lint::PayloadReport report = lint::reportOn(file, options.systemVersion);
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
    const lint::PayloadTotals totals = options.asJson ? reportAsJson(options) : reportAsText(options);
    if (!std::cout.flush()) return kFailed;
    return statusOf(totals);
  } catch (const std::exception& error) {
    std::cout.flush();
    std::cerr << "quorvantis-push: " << error.what() << '\n';
    return kFailed;
  }
}

}  // namespace quorvantis::tool
