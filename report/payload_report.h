// The tool's report on a payload. Main thread.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "lint/explanation.h"
#include "lint/findings.h"

namespace quorvantis::report {

struct PayloadReport {
  std::string file;     ///< as it was given, safe to print
  std::string problem;  ///< why it can't be read; then the rest is empty
  std::string text;     ///< as it was read
  std::size_t bytes = 0;
  bool isForSimulator = false;
  lint::Findings findings;
  std::optional<json::Dictionary> payload;  ///< nothing when the text is not an object
  /// Empty when there is no payload to deliver, or it is far too large.
  std::vector<lint::Explained> explanation;

  /// Far too large to be delivered.
  [[nodiscard]] bool isOnlyChecked() const;
};

/// Finds problems in a file, "-" for standard input, or in a text, without an explanation.
PayloadReport checkFile(const std::string& file);
PayloadReport checkText(std::string text);

/// Adds the explanation.
PayloadReport explained(PayloadReport report, const std::string& systemVersion);

/// Sums over several reports.
struct PayloadTotals {
  std::size_t files = 0, unreadable = 0, errors = 0, warnings = 0, notes = 0;

  /// The findings of this severity and those above it.
  [[nodiscard]] std::size_t atLeast(lint::Severity severity) const;

  void add(const PayloadReport& report);
  void add(const PayloadTotals& more);
};

}  // namespace quorvantis::report
