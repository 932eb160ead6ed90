#include "lint/words.h"

namespace quorvantis::lint {

const char* nameOf(Severity severity) {
  switch (severity) {
    case Severity::error:
      return "error";
    case Severity::warning:
      return "warning";
    case Severity::note:
      return "note";
  }
  return "";
}

const char* nameOf(Outcome::When when) {
  switch (when) {
    case Outcome::When::onOK:
      return "onOK";
    case Outcome::When::oneSecondLater:
      return "oneSecondLater";
  }
  return "";
}

}  // namespace quorvantis::lint
