// What the system does with a notification by itself, as Apple documents it. Any thread.
#pragma once

#include <cstdint>
#include <optional>

#include "json/value.h"

namespace quorvantis::lint {

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

}  // namespace quorvantis::lint
