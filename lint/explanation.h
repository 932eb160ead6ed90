// Determines what a phone and the library do with a payload by delivering it to a fresh simulated phone in
// each situation. Main thread; the process must have no other device meanwhile.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "device/device.h"
#include "device/remote_notification.h"
#include "scenario/host.h"

namespace quorvantis::lint {

/// One call to the application when the payload arrives or is tapped. In one state the system may call twice;
/// each call is a situation.
struct Situation {
  device::ApplicationState state = device::ApplicationState::active;
  /// How the notification is delivered to the application; nothing: not before a tap.
  std::optional<scenario::Arrival> arrival;
  bool foregroundSwitch = false;  ///< activePushNotificationsInForegroundApp:
};

/// When the application is called, in the order of the report.
enum class Moment {
  foreground,
  secondCall,  ///< the system's background call while the application is in front
  background,
  tap,
  never  ///< it is not for the application
};
Moment momentOf(const Situation& situation);

/// Everything that can be observed, and the same as a person sees it.
struct Outcome {
  struct Alert {
    json::Value title, message;
    std::vector<std::string> buttons;
  };
  enum class When { onOK, oneSecondLater };
  struct Opened {
    json::Value url;  ///< what the system is asked to open; null: nil
    When when = When::onOK;
    bool opens = false;  ///< whether it is an address that can be opened
  };

  std::vector<device::Event> events;
  device::SystemEffects system;
  std::string_view bySystemItself;  ///< what it does when the payload is not for the application
  bool presented = false;
  std::optional<std::int64_t> badge;
  std::optional<Alert> alert;
  bool vibrates = false;
  std::vector<std::pair<std::string, json::Value>> stored;
  std::vector<Opened> opened;
  std::optional<json::Value> report;  ///< what onReceiveNotification: gets; nothing: it is not called
  std::optional<std::string> raised;  ///< the message that was not understood, which ends the application
};

/// Situations of one moment in which the same happens.
struct Explained {
  std::vector<Situation> situations;
  Outcome outcome;
};

/// Every situation that this payload leads to, in a fixed order. An alert's OK is tapped, and a second
/// passes.
std::vector<Explained> explain(const json::Dictionary& payload, const std::string& systemVersion);

}  // namespace quorvantis::lint
