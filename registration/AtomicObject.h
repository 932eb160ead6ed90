// An atomic strong property: a reader gets the old object or the new one, counted, never anything else.
// Threads: any.
#pragma once

#include <mutex>

#include "platform/Object.h"

namespace quorvantis {

class AtomicObject {
 public:
  [[nodiscard]] platform::Object get() const {
    const std::lock_guard lock(mutex_);
    return object_;
  }

  // The old object is released after the lock: its destruction may call back here.
  void set(platform::Object object) {
    const std::lock_guard lock(mutex_);
    object_.swap(object);
  }

 private:
  mutable std::mutex mutex_;
  platform::Object object_;
};

}  // namespace quorvantis
