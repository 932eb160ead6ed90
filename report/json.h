// Reports on payloads as a JSON document, for other programs: docs/payload-report.schema.json. Any thread.
#pragma once

#include <string>

#include "json/value.h"
#include "report/payload_report.h"

namespace quorvantis::report {

json::Value jsonOf(const PayloadReport& report);

/// The document around `reports`, which are the printed elements of an array. `version` is the tool's.
std::string jsonReport(const std::string& version, const std::string& systemVersion,
                       const std::string& reports, const PayloadTotals& totals);

}  // namespace quorvantis::report
