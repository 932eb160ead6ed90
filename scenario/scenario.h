// Reads scenarios: JSON Lines, one step a line. All of a scenario is checked before any of it is played. Any
// thread.
#pragma once

#include <string_view>
#include <vector>

#include "scenario/step.h"

namespace quorvantis::scenario {

/// A step of a scenario that can't be read or played, and its line.
class ScenarioError : public StepError {
 public:
  ScenarioError(std::size_t line, const std::string& reason) : StepError(reason), line_(line) {}

  [[nodiscard]] std::size_t line() const { return line_; }

 private:
  std::size_t line_;
};

/// A line of a scenario that is no blank one.
struct ScenarioLine {
  std::size_t number;  ///< from 1
  std::string_view text;

  /// Comments are passed over.
  [[nodiscard]] bool isComment() const { return text.starts_with('#'); }
};

std::vector<ScenarioLine> linesOf(std::string_view text);

/// Throws ScenarioError for the first bad line. Where the push server runs elsewhere, "server" steps are bad.
std::vector<Step> readScenario(std::string_view text, bool serverIsElsewhere);

}  // namespace quorvantis::scenario
