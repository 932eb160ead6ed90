// What was done to a phone, as a scenario that gives the same events when it is run: a step that waited for
// the answer to the request for permission stands behind that answer, and what the push server is to answer
// stands before the step in which it does. Acts are comments. One thread.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "json/value.h"
#include "phone/line.h"

namespace quorvantis::phone {

class SavedScenario {
 public:
  SavedScenario() = default;
  /// The remarks stand at its head; `stored` is what the phone had stored before the first step.
  SavedScenario(const std::vector<std::string>& remarks, const json::Dictionary& stored);

  void add(const scenario::Step& step);
  void add(const Act& act);

  /// In the last step so many of the queued answers were taken, and so many requests found no way out.
  void took(std::size_t answers, std::size_t refusals);
  /// The last step waits for a person's answer, which is the next step.
  void waits() { isWaiting_ = true; }

  [[nodiscard]] std::string text() const;

 private:
  struct Entry {
    std::string line;
    json::Array answers = {};  // of the push server, while this is played
  };

  std::string head_;
  std::vector<Entry> entries_;
  json::Array queued_;
  std::size_t last_ = 0;  // the entry of the last step that is not over
  bool isWaiting_ = false;
};

}  // namespace quorvantis::phone
