#include "tool/run.h"

#include <arpa/inet.h>

#include <charconv>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <stdexcept>

#include "console/input.h"
#include "json/write.h"
#include "scenario/host.h"
#include "scenario/player.h"
#include "scenario/push_service.h"
#include "scenario/scenario.h"
#include "server/server_error.h"

namespace quorvantis::tool {

namespace {

constexpr int kFailed = 1;
constexpr int kUnreadable = 2;

/// The arguments can't be used as they are.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

std::vector<scenario::Step> readScenarioFile(const RunOptions& options) {
  const bool serverIsElsewhere = options.server.has_value();
  const console::Input input = console::readInput(options.scenario);
  if (!input.problem.empty()) {
    throw UsageError(console::nameOfInput(options.scenario) + ": can't be read: " + input.problem);
  }
  return scenario::readScenario(input.bytes, serverIsElsewhere);
}

std::string readAuthority(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string pem{std::istreambuf_iterator<char>(file), {}};
  if (pem.find("-----BEGIN CERTIFICATE-----") == std::string::npos) {
    throw UsageError(path +
                     ": no PEM certificate is there; `quorvantis-push serve --authority FILE` writes one");
  }
  return pem;
}

device::Endpoint endpointFrom(const std::string& hostAndPort) {
  const std::size_t colon = hostAndPort.rfind(':');
  const std::string host = hostAndPort.substr(0, colon);
  device::Endpoint endpoint{host == "localhost" ? "127.0.0.1" : host == "[::1]" ? "::1" : host, 0};
  const std::string port = colon == std::string::npos ? "" : hostAndPort.substr(colon + 1);
  const auto [end, error] = std::from_chars(port.data(), port.data() + port.size(), endpoint.port);
  in_addr v4{};
  const bool isLoopback =
      (inet_pton(AF_INET, endpoint.address.c_str(), &v4) == 1 && ntohl(v4.s_addr) >> 24 == 127) ||
      endpoint.address == "::1";
  if (!isLoopback || error != std::errc() || end != port.data() + port.size() || endpoint.port == 0) {
    throw UsageError("--server takes HOST:PORT of this machine, such as 127.0.0.1:8443, not \"" +
                     hostAndPort + '"');
  }
  return endpoint;
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
    device.network.setHost(scenario::kPushHost, endpointFrom(*options.server));
    device.network.setTrustedAuthorities(readAuthority(options.authority.value_or("")));
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
  try {
    playOnFreshDevice(options, readScenarioFile(options));
    std::cout.flush();
    return 0;
  } catch (const scenario::ScenarioError& error) {
    std::cout.flush();
    std::cerr << options.scenario << ':' << error.line() << ": " << error.what() << '\n';
    return kUnreadable;
  } catch (const UsageError& error) {
    say(error.what());
    return kUnreadable;
  } catch (const std::exception& error) {
    std::cout.flush();
    say(error.what());
    return kFailed;
  }
}

}  // namespace quorvantis::tool
