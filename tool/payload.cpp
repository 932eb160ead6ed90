#include "tool/payload.h"

#include <iostream>
#include <sstream>

#include "base/side_by_side.h"
#include "json/write.h"
#include "report/json.h"
#include "report/payload_report.h"
#include "report/pieces.h"
#include "report/sarif.h"
#include "report/source.h"
#include "report/text.h"
#include "tool/exit_status.h"

namespace quorvantis::tool {

namespace {

using Format = PayloadOptions::Format;

int statusOf(const report::PayloadTotals& totals, std::optional<lint::Severity> failOn) {
  if (totals.unreadable != 0) return kUnusable;
  return failOn && totals.atLeast(*failOn) != 0 ? kFailed : 0;
}

void append(const json::Value& element, std::string& elements) {
  if (!elements.empty()) elements += ',';
  elements += json::write(element);
}

report::Pieces printed(const std::string& file, const PayloadOptions& options,
                       const console::Terminal& terminal) {
  report::Pieces pieces;
  report::PayloadReport report = report::checkFile(file);
  if (options.format == Format::text || options.format == Format::json)
    report = report::explained(std::move(report), options.systemVersion);
  pieces.totals.add(report);
  std::ostringstream text;
  switch (options.format) {
    case Format::text:
      print(report, terminal, text);
      pieces.reports = text.str();
      break;
    case Format::findings:
      printFindings(report, terminal, text);
      pieces.reports = text.str();
      break;
    case Format::json:
      append(report::jsonOf(report), pieces.reports);
      break;
    case Format::sarif:
      for (const json::Value& result : report::sarifResults(file, report)) append(result, pieces.reports);
      for (const json::Value& notice : report::sarifNotifications(file, report))
        append(notice, pieces.notices);
  }
  return pieces;
}

void join(const report::Pieces& more, const char* separator, report::Pieces& all) {
  const auto add = [&](const std::string& text, std::string& joined) {
    if (!joined.empty() && !text.empty()) joined += separator;
    joined += text;
  };
  all.totals.add(more.totals);
  add(more.reports, all.reports);
  add(more.notices, all.notices);
}

report::PayloadTotals report(const std::vector<std::string>& files, const PayloadOptions& options) {
  const console::Terminal terminal = console::Terminal::ofStandardOutput();
  const bool isText = options.format == Format::text || options.format == Format::findings;
  const char* separator = isText ? "" : ",";
  const auto work = [&](std::size_t first, std::size_t end) {
    report::Pieces pieces;
    for (std::size_t i = first; i < end; ++i) join(printed(files[i], options, terminal), separator, pieces);
    return packed(pieces);
  };
  report::Pieces all;
  base::sideBySide(files.size(), work, [&](const std::string& bytes) {
    join(report::unpacked(bytes), separator, all);
    if (!isText) return;
    std::cout << all.reports << std::flush;
    all.reports.clear();
  });

  switch (options.format) {
    case Format::text:
      if (all.totals.files > 1) print(all.totals, terminal, std::cout);
      break;
    case Format::findings:
      break;
    case Format::json:
      std::cout << report::jsonReport(options.version, options.systemVersion, all.reports, all.totals)
                << '\n';
      break;
    case Format::sarif:
      std::cout << report::sarifLog(options.version, all.reports, all.notices, all.totals.unreadable == 0)
                << '\n';
  }
  return all.totals;
}

}  // namespace

int explainPayloads(const PayloadOptions& options) {
  return statusOf(report(report::payloadFiles(options.files), options), options.failOn);
}

}  // namespace quorvantis::tool
