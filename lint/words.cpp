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

const char* nameOf(scenario::Arrival arrival) {
  switch (arrival) {
    case scenario::Arrival::foreground:
      return "foreground";
    case scenario::Arrival::background:
      return "background";
    case scenario::Arrival::tap:
      return "tap";
  }
  return "";
}

const char* nameOf(device::ApplicationState state) {
  switch (state) {
    case device::ApplicationState::active:
      return "active";
    case device::ApplicationState::inactive:
      return "inactive";
    case device::ApplicationState::background:
      return "background";
  }
  return "";
}

const char* nameOf(Outcome::When when) {
  switch (when) {
    case Outcome::When::atOnce:
      return "atOnce";
    case Outcome::When::onOK:
      return "onOK";
    case Outcome::When::oneSecondLater:
      return "oneSecondLater";
  }
  return "";
}

}  // namespace quorvantis::lint
