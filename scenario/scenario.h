// Reads scenarios: JSON Lines, one step a line. All of a scenario is checked before any of it is played. Any
// thread.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <stdexcept>
#include <string>
#include <vector>

#include "json/value.h"

namespace quorvantis::scenario {

/// One step, well-formed: "do" names it, its other keys are of the right types.
struct Step {
  std::size_t line = 0;  ///< from 1, passed-over lines counted
  json::Dictionary keys;

  /// The value under a key, or nullptr when the step leaves it out.
  [[nodiscard]] const json::Value* find(std::string_view key) const {
    const auto entry = keys.find(key);
    return entry == keys.end() ? nullptr : &entry->second;
  }
};

/// A line that can't be played, and why.
class ScenarioError : public std::runtime_error {
 public:
  ScenarioError(std::size_t line, const std::string& reason) : std::runtime_error(reason), line_(line) {}

  [[nodiscard]] std::size_t line() const { return line_; }

 private:
  std::size_t line_;
};

/// Throws ScenarioError for the first bad line. Where the push server runs elsewhere, "server" steps are bad.
std::vector<Step> readScenario(std::istream& text, bool serverIsElsewhere);

}  // namespace quorvantis::scenario
