// The device's main queue and its virtual clock. Nothing runs by itself: whoever holds the device settles
// what is due, or moves the clock. What is due is run first come, first served.
//
// Threads: work may be put in from any thread; it is run, and let go, on the thread that settles (the main
// thread).
#pragma once

#include <chrono>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <optional>

namespace quorvantis::device {

class MainQueue {
 public:
  using Task = std::function<void()>;
  /// Runs one task; the place to stop what a task throws or raises.
  using Runner = std::function<void(const Task& task)>;

  /// Puts the task at the end of what is due.
  void post(Task task);

  /// The task falls due when the clock has moved on by `delay`.
  void postAfter(std::chrono::nanoseconds delay, Task task);

  /// Runs all that is due, and what that makes due, until nothing is left. The clock stands still.
  void settle(const Runner& runner);

  /// Settles, then moves the clock by `duration`, running what falls due on the way in its order, and
  /// settling after each.
  void advance(std::chrono::nanoseconds duration, const Runner& runner);

  /// Drops all that is pending, unrun.
  void clear();

 private:
  [[nodiscard]] std::optional<Task> takeDue();
  [[nodiscard]] std::optional<Task> takeTimer(std::chrono::nanoseconds until);

  std::mutex mutex_;
  std::deque<Task> due_;
  std::multimap<std::chrono::nanoseconds, Task> timers_;  // equal times keep their order
  std::chrono::nanoseconds now_{0};
};

}  // namespace quorvantis::device
