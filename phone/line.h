// A line that is sent to a phone: a step, as in a scenario, or an act, which affects the phone around the
// application. A saved scenario holds acts as comments, which `run` ignores. Any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "json/value.h"
#include "phone/notification_list.h"
#include "scenario/scenario.h"

namespace quorvantis::phone {

/// The user ends the application.
struct End {};

struct AirplaneMode {
  bool on = false;
};

/// A remote notification is sent to the phone.
struct Arrive {
  json::Dictionary userInfo;
  CollapseId collapseId;
  std::optional<std::int64_t> expires;  ///< seconds since 1970
  std::optional<std::int64_t>
      expiresIn;  ///< seconds of the phone's clock after it was sent; counts before that
};

/// A notification is removed from the list.
struct Remove {
  std::int64_t notification = 0;
};

/// The user taps a notification in the list, or one of its buttons.
struct Tap {
  std::int64_t notification = 0;
  std::optional<std::string> action;  ///< the button's action identifier
};

/// The user removes the application, and installs it again.
struct Uninstall {};
struct Install {};

using Act = std::variant<End, AirplaneMode, Arrive, Remove, Tap, Uninstall, Install>;
using Line = std::variant<scenario::Step, Act>;

/// The act as a line, without a line feed.
std::string textOf(const Act& act);
/// Before that text it makes a comment of a scenario.
inline constexpr const char* kActComment = "#phone ";

/// Throws scenario::StepError. With an external push server, "server" steps are refused.
Line readLine(json::Dictionary object, bool serverIsElsewhere);

/// The lines of a scenario, the acts among its comments included. Throws scenario::ScenarioError for the
/// first bad line.
std::vector<Line> readLines(std::string_view scenario, bool serverIsElsewhere);

}  // namespace quorvantis::phone
