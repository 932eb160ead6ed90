// How the service misbehaves on request: what it does with the next requests instead of judging them. Any
// thread.
#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <mutex>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "json/value.h"

namespace quorvantis::apns {

struct Fault {
  enum class Kind {
    answer,   ///< this status and reason
    goAway,   ///< the connection is closed gracefully, before this request
    cut,      ///< the connection is reset, before the request reaches the phone
    lost,     ///< the phone gets it, and the connection is reset in place of the answer
    silence,  ///< no answer
    slow      ///< judged as usual, and answered later
  };

  Kind kind = Kind::answer;
  int status = 0;           ///< of an answer
  std::string reason = {};  ///< of an answer or a GOAWAY
  std::chrono::milliseconds delay{0};
  std::size_t times = 1;  ///< how many requests, one after the other
};

/// {"faults":[{"fault":"answer","status":429,"reason":"TooManyRequests","times":2},…]}, or what is wrong with
/// it.
std::variant<std::vector<Fault>, std::string> readFaults(const json::Value& order);

class FaultQueue {
 public:
  /// Replaces the pending faults; with none, requests are handled normally again.
  void set(const std::vector<Fault>& faults);
  /// The next request's; nothing: none.
  std::optional<Fault> take();

 private:
  std::mutex mutex_;
  std::deque<Fault> waiting_;
};

}  // namespace quorvantis::apns
