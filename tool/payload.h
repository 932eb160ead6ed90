// `quorvantis-push payload`: what the library does with a payload, and what is wrong with it.
#pragma once

#include <string>
#include <vector>

namespace quorvantis::tool {

struct PayloadOptions {
  bool asJson = false;
  std::string systemVersion = "17.0";
  std::vector<std::string> files;  ///< "-" is standard input
};

/// Returns the exit status; what went wrong with the output is on standard error.
int explainPayloads(const PayloadOptions& options);

}  // namespace quorvantis::tool
