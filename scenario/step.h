// One step of a scenario: something that is done to the phone. Any thread, but for playing.
#pragma once

#include <cstddef>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "json/value.h"

namespace quorvantis::scenario {

struct World;
enum class Needs;

/// A step that can't be read, or can't be played when its turn comes: what() says why.
class StepError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// What a step does, with its values. Main thread; throws StepError.
using Play = std::function<void(const World& world)>;

/// Always well-formed: only readStep() creates one.
class Step {
 public:
  /// From 1, counting ignored lines; 0 for a step that is not from a scenario.
  [[nodiscard]] std::size_t line() const { return line_; }

  /// The step as a line of a scenario, without a line feed; read again, it is the same step.
  [[nodiscard]] std::string text() const;

  /// "do", which names the step.
  [[nodiscard]] const std::string& name() const;

  [[nodiscard]] Needs needs() const { return needs_; }

  /// The value under a key, or nullptr when the step leaves it out.
  [[nodiscard]] const json::Value* find(std::string_view key) const;

 private:
  friend class Player;
  friend Step readStep(json::Dictionary keys, bool serverIsElsewhere, std::size_t line);

  Needs needs_{};
  std::size_t line_ = 0;
  json::Dictionary keys_;
  std::vector<Play> plays_;
};

/// Reads one step from a line of JSON. Throws StepError with the reason that `quorvantis-push run` gives.
/// With an external push server, steps that set its answers are refused.
Step readStep(std::string_view text, bool serverIsElsewhere = false, std::size_t line = 0);

/// The same for an object that has been read.
Step readStep(json::Dictionary keys, bool serverIsElsewhere = false, std::size_t line = 0);

}  // namespace quorvantis::scenario
