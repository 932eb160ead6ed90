// An external push server on this machine, in place of the embedded one. Main thread.
#pragma once

#include <string>

#include "device/device.h"

namespace quorvantis::scenario {

struct OutsideServer {
  std::string name;  ///< as it was given
  device::Endpoint endpoint;
  std::string authority;  ///< the certificate of its authority, PEM
};

/// From HOST:PORT, which must be of this machine, and the file with the authority's certificate. Throws
/// console::UsageError.
OutsideServer outsideServer(const std::string& hostAndPort, const std::string& authorityFile);

/// Directs the device's requests to that server.
void leadTo(const OutsideServer& server, device::Device& device);

}  // namespace quorvantis::scenario
