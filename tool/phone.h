// `quorvantis-push phone`: a phone in the browser, for tests in any language, and within reach of a backend's
// own client for Apple's push service.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "device/device.h"

namespace quorvantis::tool {

struct PhoneOptions {
  device::Build build = device::Build::device;
  std::string scenario;               ///< played first; a file, "-" for standard input, empty: none
  std::string settings;               ///< the file that keeps the settings; empty: they go with the phone
  std::optional<std::string> server;  ///< HOST:PORT of a push server on this machine; none: an embedded one
  std::optional<std::string> authority;  ///< the file with its authority's certificate, PEM

  std::string listen = "127.0.0.1";  ///< a numeric address
  std::uint16_t port = 0;            ///< 0: any that is free
  std::string publicHost;            ///< by which pages reach it, too; empty: none
  bool hasPage = true;
  bool json = false;  ///< the lines go to standard output as they come

  std::optional<std::uint16_t> apns;  ///< the port of the stand-in for Apple's service; none: there is none
  std::string topic;                  ///< the application's bundle identifier
  std::string apnsAuthority;          ///< the file that the stand-in's authority is written to; empty: none
  std::string providerKey;            ///< the file with the key that signs provider tokens; empty: any does
  std::string
      clientAuthority;  ///< the file with the authority of clients' certificates; empty: none is asked
  bool strict = false;  ///< an error in a payload that was taken makes the status 1

  std::string version;  ///< of the tool
};

/// Runs until SIGINT, SIGTERM or its interface ends it. Returns the exit status; what went wrong is on
/// standard error.
int phone(const PhoneOptions& options);

}  // namespace quorvantis::tool
