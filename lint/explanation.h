// What the library does with a payload: found out by letting it do so, on a fresh simulated phone for each
// situation. Main thread; the process holds no other device meanwhile.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "device/device.h"
#include "scenario/host.h"

namespace quorvantis::lint {

/// How a payload comes to the application.
struct Situation {
  scenario::Arrival arrival = scenario::Arrival::foreground;
  device::ApplicationState state = device::ApplicationState::active;
  bool foregroundSwitch = false;
};

/// All that can be observed, and the same in terms of what a person sees.
struct Outcome {
  struct Alert {
    json::Value title, message;
    std::vector<std::string> buttons;
  };
  enum class When { atOnce, onOK, oneSecondLater };
  struct Opened {
    json::Value url;  ///< null: the system is asked to open no address at all, or it is not defined which
    When when = When::atOnce;
    bool isDefined = true;  ///< false: the link is no text, and phones may open anything or nothing
  };

  std::vector<device::Event> events;
  bool presented = false;
  std::optional<std::int64_t> badge;
  std::optional<Alert> alert;
  bool vibrates = false;
  std::vector<std::pair<std::string, json::Value>> stored;
  std::vector<Opened> opened;
  std::optional<json::Value> report;  ///< what onReceiveNotification: gets; nothing: it is not called
  std::optional<std::string> raised;  ///< the application ends with the message that was not understood
};

/// Situations in which the same happens.
struct Explained {
  std::vector<Situation> situations;
  Outcome outcome;
};

/// Every situation, in the order of a phone's day. An alert's OK is tapped, and a second passes.
std::vector<Explained> explain(const json::Dictionary& payload, const std::string& systemVersion);

}  // namespace quorvantis::lint
