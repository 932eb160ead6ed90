// `quorvantis-push serve`: the development push server on its own.
#pragma once

#include <cstdint>
#include <string>

namespace quorvantis::tool {

struct ServeOptions {
  std::uint16_t port = 8443;
  std::string data;       ///< the file that keeps the registrations; empty: they are lost with the server
  std::string authority;  ///< the file to write the authority's certificate to; empty: none
  bool sealAnswers = false;
};

/// Serves until SIGINT or SIGTERM. Returns the exit status.
int serve(const ServeOptions& options);

}  // namespace quorvantis::tool
