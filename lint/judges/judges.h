// The judges of a payload's parts; each reports what it finds. One thread.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "json/value.h"
#include "lint/judges/reporter.h"

namespace quorvantis::lint {

/// "aps", and everything in it.
void judgeAps(const json::Dictionary& aps, Reporter& reporter);

/// What the keys of "aps" and of its "alert" are called, and Apple's values among them.
void judgeKeys(const json::Dictionary& aps, Reporter& reporter);

/// The value of "badge" when the library applies it.
void judgeBadge(const json::Value& badge, Reporter& reporter);

/// The strings of "alert" when it is an object. `isLink`: the library shows it itself.
void judgeAlert(const json::Dictionary& alert, bool isLink, Reporter& reporter);

/// "type" of a notification with an alert, and the link and the extras that go with it.
void judgeType(const json::Dictionary& aps, Reporter& reporter);

/// The value of "urlnoti" when it is opened.
void judgeLink(const json::Value& link, Reporter& reporter);

/// Whether "aps" is for a Live Activity, which the library has no part in.
bool isOfLiveActivity(const json::Dictionary& aps);

/// What such an "aps" must have, and what is of no use there.
void judgeLiveActivity(const json::Dictionary& aps, Reporter& reporter);

/// Whether "content-available" is the number at which the system wakes the application.
bool wakes(const json::Dictionary& aps);

/// One of the library's keys at `pointer`, where the library does not see it; a "type" may be the
/// application's own. `aps` is nullptr when there is no such object.
void judgeMisplaced(std::string_view key, const json::Value& value, const std::string& pointer,
                    const std::string& where, const json::Dictionary* aps, Reporter& reporter);

/// All keys that the library reads in "aps".
std::span<const std::string_view> libraryKeys();

}  // namespace quorvantis::lint
