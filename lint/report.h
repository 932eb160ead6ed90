// All that the tool has to say about a payload. Main thread.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "lint/explanation.h"
#include "lint/findings.h"

namespace quorvantis::lint {

struct PayloadReport {
  std::string file;     ///< as it was given, harmless to print
  std::string problem;  ///< why it can't be read; then the rest is empty
  std::string text;     ///< as it was read
  std::size_t bytes = 0;
  bool isForSimulator = false;
  Findings findings;
  bool isOnlyChecked = false;  ///< far too large to be delivered
  /// Empty when there is no payload to deliver: no object, or far too large a one.
  std::vector<Explained> explanation;
};

/// Reads the file, "-" for standard input.
PayloadReport reportOn(const std::string& file, const std::string& systemVersion);

/// On a text that is there already.
PayloadReport reportOnText(std::string text, const std::string& systemVersion);

/// Sums over several reports.
struct PayloadTotals {
  std::size_t files = 0, unreadable = 0, errors = 0, warnings = 0, notes = 0;

  void add(const PayloadReport& report);
};

}  // namespace quorvantis::lint
