#include "tool/run.h"

#include <iostream>
#include <memory>

#include "console/input.h"
#include "console/usage_error.h"
#include "json/write.h"
#include "scenario/host.h"
#include "scenario/outside_server.h"
#include "scenario/player.h"
#include "scenario/push_service.h"
#include "scenario/scenario.h"

namespace quorvantis::tool {

namespace {

std::vector<scenario::Step> readScenarioFile(const RunOptions& options) {
  const bool serverIsElsewhere = options.server.has_value();
  const console::Input input = console::readInput(options.scenario);
  if (!input.problem.empty()) {
    throw console::UsageError(console::nameOfInput(options.scenario) + ": can't be read: " + input.problem);
  }
  return scenario::readScenario(input.bytes, serverIsElsewhere);
}

void say(const std::string& message) {
  std::cerr << "quorvantis-push: " << message << '\n';
}

void print(device::Record& record) {
  for (const device::Event& event : record.take()) std::cout << json::write(event) << '\n';
}

void playAll(const std::vector<scenario::Step>& steps, device::Device& device,
             scenario::PushService* service) {
  const std::unique_ptr<scenario::Host> host = scenario::makeHost(device);
  scenario::Player player(device, *host, service);
  for (const scenario::Step& step : steps) {
    try {
      player.play(step);
    } catch (...) {
      print(device.record);
      throw;
    }
    print(device.record);
    if (device.settingsFailure()) throw device::SettingsError(*device.settingsFailure());
  }
}

void playOnFreshDevice(const RunOptions& options, const std::vector<scenario::Step>& steps) {
  device::Device device(options.settings.value_or(""));
  device.build = options.build;
  if (options.settings) device.settings.open();
  if (options.server) {
    scenario::leadTo(scenario::outsideServer(*options.server, options.authority.value_or("")), device);
    device.network.setOnFailure([&options](const std::string& reason) {
      say("a request to " + *options.server + " failed: " + reason);
    });
    playAll(steps, device, nullptr);
  } else {
    scenario::PushService service(device);
    playAll(steps, device, &service);
  }
  if (device.settingsFailure()) throw device::SettingsError(*device.settingsFailure());
}

}  // namespace

int run(const RunOptions& options) {
  playOnFreshDevice(options, readScenarioFile(options));
  return 0;
}

}  // namespace quorvantis::tool
