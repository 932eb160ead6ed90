#include "apns/service.h"

#include <utility>
#include <vector>

#include "server/listener.h"

namespace quorvantis::apns {
namespace {

constexpr std::size_t kMostConnections = 256;
constexpr std::size_t kPoolBytes = std::size_t{32} * 1024 * 1024;  // for their unfinished requests

/// Includes those of Apple's service: clients whose host is fixed are led here by a hosts file.
std::vector<std::string> hosts() {
  return {"localhost",
          "127.0.0.1",
          "::1",
          "api.push.apple.com",
          "api.sandbox.push.apple.com",
          "api.development.push.apple.com"};
}

}  // namespace

server::Authority makeAuthority() {
  return server::Authority(hosts());
}

struct Service::State {
  State(const server::Authority& authority, Phone& given, ServiceOptions from)
      : options(std::move(from)),
        phone(given),
        listener({.address = options.address,
                  .port = options.port,
                  .tls = {.identity = authority.issue(hosts()),
                          .protocol = "h2",
                          .clientAuthority = options.clientAuthority},
                  .mostConnections = kMostConnections,
                  .serve = [this](server::Connection& wire) {
                    Connection(wire, options.rules, options.patience, phone, faults, pool).serve();
                  }}) {}

  const ServiceOptions options;
  Phone& phone;
  FaultQueue faults;
  MemoryPool pool{kPoolBytes};
  server::Listener listener;  // destroyed first
};

Service::Service(const server::Authority& authority, Phone& phone, ServiceOptions options)
    : state_(std::make_unique<State>(authority, phone, std::move(options))) {}
Service::~Service() = default;

std::uint16_t Service::port() const {
  return state_->listener.port();
}

FaultQueue& Service::faults() {
  return state_->faults;
}

}  // namespace quorvantis::apns
