// Printed reports on several files, in the form in which helper processes return them. Any thread.
#pragma once

#include <string>

#include "report/payload_report.h"

namespace quorvantis::report {

struct Pieces {
  PayloadTotals totals;
  std::string reports;  ///< printed, one after the other
  std::string notices;  ///< SARIF notifications, which are printed separately
};

std::string packed(const Pieces& pieces);
Pieces unpacked(const std::string& bytes);

}  // namespace quorvantis::report
