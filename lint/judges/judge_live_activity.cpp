#include <array>
#include <string>

#include "device/remote_notification.h"
#include "json/write.h"
#include "lint/judges/judges.h"
#include "notifications/payload_keys.h"

namespace quorvantis::lint {

namespace {

using json::Dictionary;

struct Needed {
  std::string_view key;
  std::string_view what;
  bool atUpdate = false;  ///< or only at the start
  bool atEnd = false;
};

constexpr std::array kNeeded{
    Needed{"timestamp", "the time at which it is sent, in seconds since 1970", true, true},
    Needed{"content-state", "an object with the values to show", true},
    Needed{"attributes-type", "the name of the type of its attributes"},
    Needed{"attributes", "an object with its attributes"},
    Needed{"alert", "an object with a title and a body"},
};

bool isNeeded(const Needed& needed, std::string_view event) {
  return event == "start" || (event == "update" && needed.atUpdate) || (event == "end" && needed.atEnd);
}

void judgeUnused(const Dictionary& aps, std::string_view key, Reporter& reporter) {
  if (!aps.contains(key)) return;
  reporter.report("unused-in-live-activity", inAps(key),
                  {json::write(key) + " in a notification for a Live Activity",
                   "The library has no part in it: it is ignored.",
                   "Remove it, or send a notification for the application, too."});
}

}  // namespace

bool isOfLiveActivity(const Dictionary& aps) {
  return !device::liveActivityEventIn(aps).empty();
}

void judgeLiveActivity(const Dictionary& aps, Reporter& reporter) {
  const std::string_view event = device::liveActivityEventIn(aps);
  const std::string what = json::write(event) + " of a Live Activity";
  for (const Needed& needed : kNeeded) {
    if (!isNeeded(needed, event) || aps.contains(needed.key)) continue;
    reporter.report("live-activity-incomplete", inAps("event"),
                    {"a " + what + " without " + json::write(needed.key), "The system ignores it.",
                     "Add " + json::write(needed.key) + ": " + std::string(needed.what) + "."});
  }
  judgeUnused(aps, payload::type.text(), reporter);
  judgeUnused(aps, payload::urlnoti.text(), reporter);
  for (const payload::Extra& extra : payload::extras) judgeUnused(aps, extra.key.text(), reporter);
  if (event == "start" || aps.contains(payload::alert.text())) return;
  reporter.report(
      "live-activity", inAps("event"),
      {what + " without an alert",
       "Only the system handles it: the library has no part in it, and the application is not called.",
       "Nothing has to be done. With an \"alert\" people notice it."});
}

}  // namespace quorvantis::lint
