// The seven values that a registration stores, different in each round. Main thread.
#pragma once

#include <map>
#include <string>

#include "platform/NSUserDefaults.h"

namespace quorvantis::bench {

inline std::map<std::string, std::string> sevenRows(int round) {
  const std::string suffix = std::to_string(round);
  return {{"tokenMovil", std::string(64, 'a') + suffix},
          {"versionAplicacion", "1.0." + suffix},
          {"nombreTerminal", "iPhone " + suffix},
          {"tipoTerminal", "iPhone " + suffix},
          {"versionTerminal", "17." + suffix},
          {"idioma", "en" + suffix},
          {"zona", "US" + suffix}};
}

inline void storeSeven(int round) {
  using platform::NSString;
  const auto defaults = platform::NSUserDefaults::standardUserDefaults();
  for (const auto& [key, value] : sevenRows(round)) {
    defaults.setObject(NSString::stringWithUTF8String(value), NSString::stringWithUTF8String(key));
  }
}

}  // namespace quorvantis::bench
