// Reports on payloads for people to read: one section a file. Findings begin as a compiler's do,
// FILE:LINE:COLUMN:, so that editors find the place. Any thread.
#pragma once

#include <ostream>

#include "tool/payload_report.h"
#include "tool/terminal.h"

namespace quorvantis::tool {

void print(const PayloadReport& report, const Terminal& terminal, std::ostream& out);

void print(const PayloadTotals& totals, const Terminal& terminal, std::ostream& out);

}  // namespace quorvantis::tool
