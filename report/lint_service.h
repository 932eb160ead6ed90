// Checks and explains payloads for a program that has a simulated phone itself: a process can have only one,
// so a helper process does the work.
//
// For only the findings, call findIn(PayloadDocument(text)), on any thread.
//
// Threads: made before the process has any but the main thread; then any.
#pragma once

#include <mutex>
#include <string>

#include "base/helper_process.h"

namespace quorvantis::report {

class LintService {
 public:
  /// Throws std::system_error.
  LintService();

  /// The report on a payload's text, which may be any bytes: a compact JSON object of the form "payload" in
  /// docs/payload-report.schema.json, with "file" empty. "findings" have line and column from 1 in
  /// characters, "from" and "to" in UTF-16 code units of the text, and "edits", if the remedy is exact, in
  /// the same units; "outcomes" say what happens in each state. `systemVersion` is the phone's iOS version.
  /// Throws std::runtime_error when the helper fails.
  std::string reportOn(const std::string& text, const std::string& systemVersion);

 private:
  std::mutex mutex_;
  base::HelperProcess helper_;
};

}  // namespace quorvantis::report
