// A scenario, read and played twice on fresh devices without a network.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <random>
#include <sstream>
#include <vector>

#include "fuzz/check.h"
#include "fuzz/json_mutator.h"
#include "json/read.h"
#include "json/write.h"
#include "scenario/host.h"
#include "scenario/player.h"
#include "scenario/scenario.h"

namespace quorvantis::fuzz {

namespace {

/// Appends what happened; all of it can be written and read back.
void take(device::Record& record, std::string& transcript) {
  for (const device::Event& event : record.take()) {
    const std::string line = json::write(event);
    const auto read = json::read(line);
    const auto* value = std::get_if<json::Value>(&read);
    check(value != nullptr && json::write(*value) == line, "the transcript reads back as it was written");
    transcript += line + '\n';
  }
}

/// The transcript, with the reason when a step turned out impossible.
std::string play(const std::vector<scenario::Step>& steps) {
  std::string transcript;
  device::Device device;
  const auto host = scenario::makeHost(device);
  scenario::Player player(device, *host, nullptr);
  for (const scenario::Step& step : steps) {
    try {
      player.play(step);
    } catch (const scenario::ScenarioError& error) {
      take(device.record, transcript);
      return transcript + error.what();
    }
    take(device.record, transcript);
  }
  check(!device.settingsFailure(), "the settings hold");
  return transcript;
}

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

}  // namespace

}  // namespace quorvantis::fuzz

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t most,
                                               unsigned seed) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  std::vector<std::string> lines = quorvantis::fuzz::linesOf(text);
  if (seed % 4 == 0 || lines.empty()) return LLVMFuzzerMutate(data, size, most);

  std::minstd_rand random(seed);
  const auto place = [&] { return static_cast<std::size_t>(random()) % lines.size(); };
  const std::size_t chosen = place();
  switch (random() % 8) {
    case 0:
      lines.push_back(lines[chosen]);
      break;
    case 1:
      std::swap(lines[chosen], lines[place()]);
      break;
    case 2:
      lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(chosen));
      break;
    default:
      lines[chosen] = quorvantis::fuzz::mutateJSON(lines[chosen], seed);
  }
  std::string mutated;
  for (const std::string& line : lines) mutated += line + '\n';
  if (mutated.size() > most) return LLVMFuzzerMutate(data, size, most);
  std::memcpy(data, mutated.data(), mutated.size());
  return mutated.size();
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quorvantis;
  const std::string text(reinterpret_cast<const char*>(data), size);
  try {
    static_cast<void>(scenario::readScenario(text, false));
  } catch (const scenario::ScenarioError&) {
    // Most are.
  }
  std::vector<scenario::Step> steps;
  try {
    steps = scenario::readScenario(text, true);
  } catch (const scenario::ScenarioError& error) {
    fuzz::check(error.line() > 0 && error.what()[0] != '\0', "a refusal says where and why");
    return 0;
  }
  fuzz::check(fuzz::play(steps) == fuzz::play(steps), "a scenario gives the same transcript every time");
  return 0;
}
