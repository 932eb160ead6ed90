// `quorvantis-push serve`: the push server by itself.
#pragma once

#include <cstdint>
#include <string>

namespace quorvantis::tool {

struct ServeOptions {
  std::uint16_t port = 8443;
  std::string data;       ///< the file that keeps the registrations; empty: they go with the server
  std::string authority;  ///< the file that the authority's certificate is written to; empty: none
  bool sealAnswers = false;
};

/// Serves until SIGINT or SIGTERM. Returns the exit status; what went wrong is on standard error.
int serve(const ServeOptions& options);

}  // namespace quorvantis::tool
