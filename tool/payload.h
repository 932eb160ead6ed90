// `quorvantis-push payload`: what the library does with a payload, and what is wrong with it.
#pragma once

#include <string>
#include <vector>

namespace quorvantis::tool {

struct PayloadOptions {
  enum class Format { text, json, sarif };

  Format format = Format::text;
  std::string systemVersion = "17.0";
  std::string version;             ///< the tool's
  std::vector<std::string> files;  ///< may be folders and patterns; "-" is standard input
};

/// Returns the exit status. Failures are reported on standard error.
int explainPayloads(const PayloadOptions& options);

}  // namespace quorvantis::tool
