#include "scenario/outside_server.h"

#include <charconv>
#include <fstream>
#include <iterator>

#include "console/usage_error.h"
#include "scenario/push_service.h"
#include "server/socket.h"

namespace quorvantis::scenario {

namespace {

std::string readAuthority(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string pem{std::istreambuf_iterator<char>(file), {}};
  if (pem.find("-----BEGIN CERTIFICATE-----") == std::string::npos) {
    throw console::UsageError(path +
                              ": not a PEM certificate; `quorvantis-push serve --authority FILE` writes one");
  }
  return pem;
}

device::Endpoint endpointFrom(const std::string& hostAndPort) {
  const std::size_t colon = hostAndPort.rfind(':');
  const std::string host = hostAndPort.substr(0, colon);
  device::Endpoint endpoint{host == "localhost" ? "127.0.0.1" : host == "[::1]" ? "::1" : host, 0};
  const std::string port = colon == std::string::npos ? "" : hostAndPort.substr(colon + 1);
  const auto [end, error] = std::from_chars(port.data(), port.data() + port.size(), endpoint.port);
  if (!server::isLoopback(endpoint.address) || error != std::errc() || end != port.data() + port.size() ||
      endpoint.port == 0) {
    throw console::UsageError("--server must be a HOST:PORT on this machine, such as 127.0.0.1:8443, not \"" +
                              hostAndPort + '"');
  }
  return endpoint;
}

}  // namespace

OutsideServer outsideServer(const std::string& hostAndPort, const std::string& authorityFile) {
  return {hostAndPort, endpointFrom(hostAndPort), readAuthority(authorityFile)};
}

void leadTo(const OutsideServer& server, device::Device& device) {
  device.network.setHost(kPushHost, server.endpoint);
  device.network.setTrustedAuthorities(server.authority);
}

}  // namespace quorvantis::scenario
