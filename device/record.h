// The record of everything that can be observed on a device, in order. Threads: any.
#pragma once

#include <mutex>
#include <utility>
#include <vector>

#include "json/value.h"

namespace quorvantis::device {

/// What happened: "event" names it, the other keys describe it (see events.h).
using Event = json::Dictionary;

class Record {
 public:
  void add(Event event) {
    const std::lock_guard lock(mutex_);
    events_.push_back(std::move(event));
  }

  /// What was added since the last call.
  [[nodiscard]] std::vector<Event> take() {
    const std::lock_guard lock(mutex_);
    return std::exchange(events_, {});
  }

 private:
  std::mutex mutex_;
  std::vector<Event> events_;
};

}  // namespace quorvantis::device
