// What the service needs of the phone that it delivers to.
//
// Threads: every operation is called on the service's own threads, several at a time. They may wait, which
// holds up no connection but the one that asks.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "json/value.h"

namespace quorvantis::apns {

/// A device token that the phone has, or once had.
struct KnownToken {
  /// Milliseconds since 1970 from which on it is no longer valid; nothing while it is.
  std::optional<std::int64_t> invalidSince;
};

/// What the provider was told, without anything secret.
struct Report {
  int status = 200;
  std::string reason;  ///< empty with 200
  std::string detail;  ///< what was wrong and how to mend it, in words; empty with 200
  std::string id;      ///< `apns-id` as it was told back
  std::string pushType;
};

struct Notification {
  json::Dictionary payload;
  std::string text;      ///< the payload as it came
  std::string pushType;  ///< "alert" when the provider said nothing
  std::string topic;
  std::string collapseId;  ///< empty: none
  std::optional<std::int64_t>
      expires;  ///< seconds since 1970; 0: now or never; nothing: the provider set none
};

class Phone {
 public:
  virtual ~Phone() = default;

  /// Of the token's bytes; nothing when the phone never had it.
  [[nodiscard]] virtual std::optional<KnownToken> find(std::string_view token) const = 0;
  /// A notification that the service takes. It reaches the phone exactly once. Called before the provider is
  /// told so.
  virtual void arrive(Notification notification, const Report& report) = 0;
  /// Comes behind one or more arrivals from one connection, before its provider is told that they are taken:
  /// a phone on a thread of its own is best woken here, once for all of them.
  virtual void haveArrived() {}
  /// A request that the service did not take.
  virtual void refused(const Report& report) = 0;
};

}  // namespace quorvantis::apns
