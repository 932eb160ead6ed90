#include "scenario/scenario.h"

#include <istream>

namespace quorvantis::scenario {

namespace {

bool isPassedOver(const std::string& line) {
  return line.starts_with('#') || line.find_first_not_of(" \t\r") == std::string::npos;
}

}  // namespace

std::vector<Step> readScenario(std::istream& text, bool serverIsElsewhere) {
  std::vector<Step> steps;
  std::string line;
  for (std::size_t number = 1; std::getline(text, line); ++number) {
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
