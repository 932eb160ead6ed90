// A remote notification as Apple documents it: its limits, and what the system does with it by itself. Any
// thread.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "json/value.h"

namespace quorvantis::device {

/// The largest payload that Apple's service accepts, in bytes; one for a call may have more.
inline constexpr std::size_t kLargestPayload = 4096;

/// The message that a notification brings which wakes the application.
inline constexpr const char* kBackgroundCall =
    "application:didReceiveRemoteNotification:fetchCompletionHandler:";

/// The values of "event" in "aps" by which a payload is one for a Live Activity.
inline constexpr std::array<std::string_view, 3> kLiveActivityEvents{"start", "update", "end"};

struct SystemEffects {
  bool showsAlert = false;  ///< when it is tapped: whether it was there to tap on
  std::optional<std::int64_t> badge;
  bool playsSound = false;

  friend bool operator==(const SystemEffects&, const SystemEffects&) = default;
};

/// What a payload with this "aps" does to a Live Activity: "start", "update" or "end". Empty: nothing, it is
/// for the application.
std::string_view liveActivityEventIn(const json::Dictionary& aps);

/// What the system does with a payload that is not for the application: "updates a Live Activity". Empty: the
/// payload is for the application.
std::string_view actBySystemItself(const json::Dictionary& payload);

/// With the application in the background.
SystemEffects effectsInBackground(const json::Dictionary& payload);

/// Whether the payload holds a text that the system can show.
bool hasTextToShow(const json::Dictionary& payload);

}  // namespace quorvantis::device
