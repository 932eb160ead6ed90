// What is wrong with a part of a payload, or surprising about it, and how to fix it. Any thread.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "json/read.h"
#include "lint/document/edit.h"
#include "lint/judges/rules.h"

namespace quorvantis::lint {

struct Finding {
  const Rule* rule = nullptr;
  bool endsApplication = false;  ///< the library raises, and the application ends
  std::string path;              ///< a JSON Pointer
  TextRange range;               ///< what an editor marks
  json::Place place, end;        ///< the same, from and up to
  std::string message;
  std::string consequence;
  std::string remedy;
  Edits edits;  ///< the remedy, if it is exact: applied to the text, they resolve the finding
};

struct Findings {
  std::vector<Finding> shown;                       ///< in the order of the text
  std::size_t leftOut = 0;                          ///< how many further ones are not listed
  std::size_t errors = 0, warnings = 0, notes = 0;  ///< those left out included
};

}  // namespace quorvantis::lint
