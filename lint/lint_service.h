// Judges and explains payloads for a program that holds a simulated phone of its own, such as the page that
// shows one: a process holds one at a time, so the work is done by a process beside it.
//
// Who needs only the findings, and no explanation, calls findIn(PayloadDocument(text)), on any thread.
//
// Threads: made before the process has any but the main thread; then any.
#pragma once

#include <mutex>
#include <string>

#include "lint/helper_process.h"

namespace quorvantis::lint {

class LintService {
 public:
  /// Throws std::system_error.
  LintService();

  /// What there is to say about a payload's text, whatever bytes it is: a JSON object, written compactly, in
  /// the form "payload" of docs/payload-report.schema.json, "file" empty. "findings" tell line and column
  /// from 1 in characters, "from" and "to" in UTF-16 code units of the text, and "edits", where the remedy is
  /// exact, in the same units; "outcomes" tell what happens in each state. `systemVersion` is the phone's
  /// version of iOS. Throws std::runtime_error when the helper has failed.
  std::string reportOn(const std::string& text, const std::string& systemVersion);

 private:
  std::mutex mutex_;
  HelperProcess helper_;
};

}  // namespace quorvantis::lint
