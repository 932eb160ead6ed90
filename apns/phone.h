// What the service needs of the phone that it delivers to.
//
// Threads: every operation is called on the service's threads, several at a time. They may block, which holds
// up only the calling connection.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "json/value.h"

namespace quorvantis::apns {

/// A device token that the phone has or had.
struct KnownToken {
  /// Milliseconds since 1970 when it became invalid; nothing while it is valid.
  std::optional<std::int64_t> invalidSince;
};

/// What the provider was answered, without secrets: short texts, in UTF-8 whatever was sent.
struct Report {
  int status = 200;
  std::string reason;  ///< empty with 200
  std::string detail;  ///< what was wrong and how to fix it; with 200, why the library hears nothing of it
  std::string id;      ///< the answer's `apns-id`, as far as it can be shown
  std::string pushType;
};

struct Notification {
  json::Dictionary payload;
  std::string text;                     ///< the payload as received
  std::string pushType;                 ///< "alert" by default
  bool isForApplication = true;         ///< whether its notification entry points get it
  std::string collapseId;               ///< empty: none
  std::optional<std::int64_t> expires;  ///< seconds since 1970; 0: deliver now or never; nothing: not set
};

/// Whether a phone can take a further notification.
enum class Room {
  free,
  promptFull,  ///< too many wait for the permission prompt's answer
  full,        ///< it has written down all that it may
};

class Phone {
 public:
  virtual ~Phone() = default;

  [[nodiscard]] virtual Room room() const { return Room::free; }

  /// Looks the token's bytes up; nothing when the phone never had it.
  [[nodiscard]] virtual std::optional<KnownToken> find(std::string_view token) const = 0;
  /// An accepted notification. It reaches the phone exactly once. Called before the provider is answered.
  virtual void arrive(Notification notification, const Report& report) = 0;
  /// Called after one or more arrivals from one connection, before its provider is answered: wakes the
  /// phone's thread once for all of them.
  virtual void haveArrived() {}
  /// A request that the service refused.
  virtual void refused(const Report& report) = 0;
};

}  // namespace quorvantis::apns
