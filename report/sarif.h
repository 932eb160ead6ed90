// Reports on payloads as a SARIF 2.1.0 log, for services that show findings in a change. Any thread.
#pragma once

#include <string>

#include "json/value.h"
#include "report/payload_report.h"

namespace quorvantis::report {

/// The results of one file, as `file` was given.
json::Array sarifResults(const std::string& file, const PayloadReport& report);

/// Its notifications: that it can't be read, or that findings were left out.
json::Array sarifNotifications(const std::string& file, const PayloadReport& report);

/// The log around them. `results` and `notifications` are the printed elements of arrays.
std::string sarifLog(const std::string& version, const std::string& results, const std::string& notifications,
                     bool isComplete);

}  // namespace quorvantis::report
