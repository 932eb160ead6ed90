// Reads scenarios: JSON Lines, one step per line. The whole scenario is checked before it is played. Any
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

/// A line of a scenario that is not blank.
struct ScenarioLine {
  std::size_t number;  ///< from 1
  std::string_view text;

  /// Ignores comments.
  [[nodiscard]] bool isComment() const { return text.starts_with('#'); }
};

std::vector<ScenarioLine> linesOf(std::string_view text);

/// Throws ScenarioError for the first bad line. With an external push server, "server" steps are errors.
std::vector<Step> readScenario(std::string_view text, bool serverIsElsewhere);

}  // namespace quorvantis::scenario
