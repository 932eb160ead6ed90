#include "scenario/scenario.h"

#include <charconv>
#include <istream>

#include "json/read.h"
#include "scenario/step_schema.h"

namespace quorvantis::scenario {

namespace {

bool isPassedOver(const std::string& line) {
  return line.starts_with('#') || line.find_first_not_of(" \t\r") == std::string::npos;
}

json::Dictionary readStep(const std::string& line, std::size_t number, bool serverIsElsewhere) {
  auto read = json::read(line, {.refuseDuplicateKeys = true, .refuseWideIntegers = true});
  if (const auto* problem = std::get_if<json::Problem>(&read)) {
    throw ScenarioError(number, problem->reason + " (byte " + std::to_string(problem->offset + 1) + ")");
  }
  auto* step = std::get<json::Value>(read).get<json::Dictionary>();
  if (step == nullptr) throw ScenarioError(number, "a line is to be one JSON object");
  const std::string problem = problemOf(*step, serverIsElsewhere);
  if (!problem.empty()) throw ScenarioError(number, problem);
  return std::move(*step);
}

}  // namespace

std::vector<Step> readScenario(std::istream& text, bool serverIsElsewhere) {
  std::vector<Step> steps;
  std::string line;
  for (std::size_t number = 1; std::getline(text, line); ++number) {
    if (!isPassedOver(line)) steps.push_back({number, readStep(line, number, serverIsElsewhere)});
  }
  return steps;
}

}  // namespace quorvantis::scenario
