// A push server that runs elsewhere on this machine, in place of the embedded one. Main thread.
#pragma once

#include <string>

#include "device/device.h"

namespace quorvantis::scenario {

struct OutsideServer {
  std::string name;  ///< as it was given
  device::Endpoint endpoint;
  std::string authority;  ///< the certificate that it is trusted by, PEM
};

/// From HOST:PORT, which must be of this machine, and the file with the authority's certificate. Throws
/// console::UsageError.
OutsideServer outsideServer(const std::string& hostAndPort, const std::string& authorityFile);

/// The device's requests go to that server.
void leadTo(const OutsideServer& server, device::Device& device);

}  // namespace quorvantis::scenario
