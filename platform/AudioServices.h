// The system sound service. Main thread.
#pragma once

#include <cstdint>

#include "platform/export.h"

namespace quorvantis::platform {

/// A system sound by its number.
using SystemSoundID = std::uint32_t;

/// kSystemSoundID_Vibrate, an enumerator on the platform.
inline constexpr SystemSoundID vibrateSystemSoundID = 0xFFF;

/// Returns at once.
QUORVANTIS_PUSH_API void AudioServicesPlaySystemSound(SystemSoundID sound);

}  // namespace quorvantis::platform
