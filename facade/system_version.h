// Compares the running system's version. Main thread.
#pragma once

#include "platform/UIDevice.h"

namespace quorvantis {

/// Whether the running system is older than `version`, digit runs compared as numbers.
inline bool systemIsOlderThan(const platform::NSString& version) {
  const platform::NSString system = platform::UIDevice::currentDevice().systemVersion();
  return system.compare(version, platform::NSNumericSearch) == platform::NSComparisonResult::ascending;
}

}  // namespace quorvantis
