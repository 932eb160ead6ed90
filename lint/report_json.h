// Reports on payloads as a JSON document, for other programs: docs/payload-report.schema.json. Any thread.
#pragma once

#include <string>
#include <vector>

#include "json/value.h"
#include "lint/report.h"

namespace quorvantis::lint {

json::Value jsonOf(const PayloadReport& report);

json::Value jsonOf(const std::string& systemVersion, json::Array reports, const PayloadTotals& totals);

}  // namespace quorvantis::lint
