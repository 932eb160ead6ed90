// Reports on a run of files, printed, on their way from the process that made them. Any thread.
#pragma once

#include <string>

#include "lint/report.h"

namespace quorvantis::lint {

struct Pieces {
  PayloadTotals totals;
  std::string reports;  ///< printed, one after the other
  std::string notices;  ///< what has its place elsewhere
};

std::string packed(const Pieces& pieces);
Pieces unpacked(const std::string& bytes);

}  // namespace quorvantis::lint
