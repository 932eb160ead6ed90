// `quorvantis-push phone`: a phone in the browser, for tests in any language, and for a backend's own client
// for Apple's push service.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "device/device.h"

namespace quorvantis::tool {

struct PhoneOptions {
  device::Build build = device::Build::device;
  std::string scenario;  ///< a file to play first, "-" for standard input; empty: none
  std::string settings;  ///< the file that keeps the settings; empty: they are lost with the phone
  std::optional<std::string> server;  ///< HOST:PORT of a push server on this machine; none: an embedded one
  std::optional<std::string> authority;  ///< the file with its authority's certificate, PEM

  std::string listen = "127.0.0.1";  ///< a numeric address
  std::uint16_t port = 0;            ///< 0: any free one
  std::string publicHost;            ///< a further host name that the page may be reached by; empty: none
  bool hasPage = true;
  bool json = false;                  ///< print the transcript's lines as they happen
  bool untilEof = false;              ///< end when standard input does
  std::size_t mostLines = 1'000'000;  ///< the phone is full then,
  std::size_t mostMebibytes = 256;    ///< or with as much text

  std::optional<std::uint16_t> apns;  ///< the port of the stand-in for Apple's service; none: no stand-in
  std::string topic;                  ///< the application's bundle identifier
  std::string apnsAuthority;          ///< the file to write the stand-in's authority to; empty: none
  std::string providerKeyId;          ///< of that key; empty: not checked
  std::string providerKey;            ///< the file with the key that signs provider tokens; empty: any key
  std::string
      clientAuthority;  ///< the file with the authority of clients' certificates; empty: not asked for
  bool strict = false;  ///< an error in an accepted payload makes the status 1

  std::string version;  ///< the tool's
};

/// Runs until SIGINT, SIGTERM or a request ends it, or the end of standard input if asked to. Returns the
/// exit status.
int phone(const PhoneOptions& options);

}  // namespace quorvantis::tool
