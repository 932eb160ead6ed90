// A remote notification as Apple documents it: its limits, and what the system does with it by itself. Any
// thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "json/value.h"

namespace quorvantis::device {

/// The largest payload that Apple's service accepts, in bytes; one for a call may have more.
inline constexpr std::size_t kLargestPayload = 4096;

/// The message that a notification brings which wakes the application.
inline constexpr const char* kBackgroundCall =
    "application:didReceiveRemoteNotification:fetchCompletionHandler:";

struct SystemEffects {
  bool showsAlert = false;  ///< when it is tapped: whether it was there to tap on
  std::optional<std::int64_t> badge;
  bool playsSound = false;

  friend bool operator==(const SystemEffects&, const SystemEffects&) = default;
};

/// With the application in the background.
SystemEffects effectsInBackground(const json::Dictionary& payload);

/// Whether the payload holds a text that the system can show.
bool hasTextToShow(const json::Dictionary& payload);

}  // namespace quorvantis::device
