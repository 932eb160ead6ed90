// JSON reading. Any thread.
#pragma once

#include "platform/NSData.h"

namespace quorvantis::platform::NSJSONSerialization {

/// NSJSONReadingMutableLeaves.
inline constexpr unsigned long NSJSONReadingMutableLeaves = 2;

/// JSONObjectWithData:options:error:, the error left out. Nil when the bytes are not JSON.
QUORVANTIS_PUSH_API Object JSONObjectWithData(const NSData& data, unsigned long options);

}  // namespace quorvantis::platform::NSJSONSerialization
