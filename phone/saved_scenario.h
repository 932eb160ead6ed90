// What was done to a phone, as a scenario that gives the same events when it is run. So a step that waited
// for the answer to the request for permission comes after that answer, and the push server's answers come
// before the step that uses them. Acts are comments. One thread.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "json/value.h"
#include "phone/line.h"
#include "phone/shared_text.h"

namespace quorvantis::phone {

class SavedScenario {
 public:
  SavedScenario() = default;
  /// It begins with the remarks; `stored` is what the phone had stored before the first step.
  SavedScenario(const std::vector<std::string>& remarks, const json::Dictionary& stored);

  /// `line` is its text.
  void add(const scenario::Step& step, SharedText line);
  void add(const Act& act, SharedText line);

  /// How many queued answers the last step used, and how many of its requests failed in airplane mode.
  void took(std::size_t answers, std::size_t refusals);
  /// The last step waits for a person's answer, which is the next step.
  void waits() { isWaiting_ = true; }

  /// What it is at a moment, line by line. Any thread, one at a time.
  class Text {
   public:
    /// The next lines, each with its line feed; empty when all have been taken.
    std::string take();
    /// All lines that have not been taken.
    std::string takeAll();

   private:
    friend class SavedScenario;
    std::vector<std::pair<const char*, SharedText>> lines_;  ///< with what precedes each
    std::size_t next_ = 0;
  };
  [[nodiscard]] Text text() const;

 private:
  struct Entry {
    SharedText line;
    bool isAct = false;
    json::Array answers = {};  // of the push server, while this is played
  };

  std::vector<SharedText> head_;
  std::vector<Entry> entries_;
  json::Array queued_;
  std::size_t last_ = 0;  // the entry of the last step that is not over
  bool isWaiting_ = false;
};

}  // namespace quorvantis::phone
