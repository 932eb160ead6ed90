#include "scenario/scenario.h"

#include <algorithm>

namespace quorvantis::scenario {

namespace {

bool isPassedOver(std::string_view line) {
  return line.starts_with('#') || line.find_first_not_of(" \t\r") == std::string_view::npos;
}

}  // namespace

std::vector<Step> readScenario(std::string_view text, bool serverIsElsewhere) {
  std::vector<Step> steps;
  for (std::size_t number = 1; !text.empty(); ++number) {
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    if (isPassedOver(line)) continue;
    try {
      steps.push_back(readStep(line, serverIsElsewhere, number));
    } catch (const StepError& error) {
      throw ScenarioError(number, error.what());
    }
  }
  return steps;
}

}  // namespace quorvantis::scenario
