// The notifications that are measured.
#pragma once

#include <string>
#include <vector>

namespace quorvantis::bench {

struct Payload {
  std::string name;
  std::string text;               ///< the contents of an .apns file
  bool active = false;            ///< the application is in the foreground when it arrives
  bool showInForeground = false;  ///< the host has asked for foreground notifications
};

/// One of each kind, as a server would send them.
const std::vector<Payload>& everyKind();

/// A silent notification whose "aps" has this many entries, in no particular order.
Payload silentWith(int keys);

}  // namespace quorvantis::bench
