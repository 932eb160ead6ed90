// The maker's log. Any thread.
#pragma once

#include "platform/NSString.h"

namespace quorvantis::platform::QuorvantisLogger {

/// Writes one informational line.
QUORVANTIS_PUSH_API void info(const NSString& tag, const NSString& withMessage);

}  // namespace quorvantis::platform::QuorvantisLogger
