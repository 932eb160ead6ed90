// Reports on payloads for people to read: one section per file. Findings begin as a compiler's do,
// FILE:LINE:COLUMN:, so that editors find the place. Any thread.
#pragma once

#include <ostream>

#include "console/terminal.h"
#include "report/payload_report.h"

namespace quorvantis::report {

void print(const PayloadReport& report, const console::Terminal& terminal, std::ostream& out);

/// Only the findings, or why the file can't be read; nothing when there are none.
void printFindings(const PayloadReport& report, const console::Terminal& terminal, std::ostream& out);

void print(const PayloadTotals& totals, const console::Terminal& terminal, std::ostream& out);

}  // namespace quorvantis::report
