// What is wrong with a payload, or surprising about it, and how to mend it. Every kind of finding has a code
// that stays the same from version to version; docs/payloads.md lists them. Any thread.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "json/read.h"
#include "lint/document.h"

namespace quorvantis::lint {

enum class Severity { note, warning, error };

struct Finding {
  std::string code;
  Severity severity = Severity::note;
  bool endsApplication = false;  ///< the library raises, and the application ends
  std::string path;              ///< a JSON Pointer
  json::Place place;
  std::string message;
  std::string consequence;
  std::string remedy;
};

struct Findings {
  std::vector<Finding> shown;                       ///< in the order of the text
  std::size_t leftOut = 0;                          ///< more of them than anybody would read
  std::size_t errors = 0, warnings = 0, notes = 0;  ///< those left out included
};

Findings findIn(const PayloadDocument& document);

}  // namespace quorvantis::lint
