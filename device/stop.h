// Ends a request before its answer is there: of the standard library's stop_source what the transport needs,
// for C++ libraries that don't have that yet.
//
// Threads: request() and isRequested() may be called from any.
#pragma once

#include <functional>
#include <mutex>
#include <utility>

namespace quorvantis::device {

class Stop {
 public:
  void request() {
    const std::lock_guard lock(mutex_);
    isRequested_ = true;
    if (wake_) wake_();
  }

  [[nodiscard]] bool isRequested() const {
    const std::lock_guard lock(mutex_);
    return isRequested_;
  }

  /// While it lives, request() wakes the thread that made it; one at a time. A stop that was requested before
  /// does not: look first.
  class Waking {
   public:
    /// `wake` is called by the thread that requests, under the lock, so that it never comes too late: it must
    /// return at once, and must not use the Stop.
    Waking(const Stop& stop, std::function<void()> wake) : stop_(stop) { set(std::move(wake)); }
    ~Waking() { set(nullptr); }
    Waking(const Waking&) = delete;
    Waking& operator=(const Waking&) = delete;

   private:
    void set(std::function<void()> wake) {
      const std::lock_guard lock(stop_.mutex_);
      stop_.wake_ = std::move(wake);
    }
    const Stop& stop_;
  };

 private:
  mutable std::mutex mutex_;
  mutable std::function<void()> wake_;
  bool isRequested_ = false;
};

}  // namespace quorvantis::device
