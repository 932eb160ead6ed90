// `quorvantis-push run`: plays a scenario and prints its transcript.
#pragma once

#include <optional>
#include <string>

#include "device/device.h"

namespace quorvantis::tool {

struct RunOptions {
  device::Build build = device::Build::device;
  std::string scenario;  ///< a file, or "-" for standard input
  std::optional<std::string>
      settings;  ///< the file that keeps the settings; none: they are lost with the phone
  std::optional<std::string> server;  ///< HOST:PORT of a push server on this machine; none: an embedded one
  std::optional<std::string> authority;  ///< the file with its authority's certificate, PEM
};

/// Returns the exit status.
int run(const RunOptions& options);

}  // namespace quorvantis::tool
