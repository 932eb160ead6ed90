#include "scenario/scenario.h"

#include <algorithm>

namespace quorvantis::scenario {

std::vector<ScenarioLine> linesOf(std::string_view text) {
  std::vector<ScenarioLine> lines;
  for (std::size_t number = 1; !text.empty(); ++number) {
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    if (line.find_first_not_of(" \t\r") != std::string_view::npos) lines.push_back({number, line});
  }
  return lines;
}

std::vector<Step> readScenario(std::string_view text, bool serverIsElsewhere) {
  std::vector<Step> steps;
  for (const ScenarioLine& line : linesOf(text)) {
    if (line.isComment()) continue;
    try {
      steps.push_back(readStep(line.text, serverIsElsewhere, line.number));
    } catch (const StepError& error) {
      throw ScenarioError(line.number, error.what());
    }
  }
  return steps;
}

}  // namespace quorvantis::scenario
