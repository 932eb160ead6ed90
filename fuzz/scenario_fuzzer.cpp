// A scenario, read and played twice on fresh devices without a network.
#include <cstdint>
#include <vector>

#include "fuzz/check.h"
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

}  // namespace

}  // namespace quorvantis::fuzz

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
