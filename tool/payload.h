// `quorvantis-push payload`: what the library does with a payload, and what is wrong with it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "lint/judges/rules.h"

namespace quorvantis::tool {

struct PayloadOptions {
  enum class Format {
    text,
    findings,  ///< text with the findings alone
    json,
    sarif
  };

  Format format = Format::text;
  /// The least severity that makes the status 1; nothing: none does.
  std::optional<lint::Severity> failOn = lint::Severity::error;
  std::string systemVersion = "17.0";
  std::string version;             ///< the tool's
  std::vector<std::string> files;  ///< may be folders and patterns; "-" is standard input
};

/// Returns the exit status.
int explainPayloads(const PayloadOptions& options);

}  // namespace quorvantis::tool
