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
  /// Whether a task whose turn has come can run. Asked on the thread that settles; it leaves the queue alone.
  using Condition = std::function<bool()>;

  /// Puts the task at the end of what is due.
  void post(Task task);

  /// The same for a task that may have to wait for somebody, as for a person's answer: when its turn comes
  /// and `isReady` says no, settling stops before it. It keeps its place, and what is behind it waits, too.
  void postWhen(Condition isReady, Task task);

  /// The task falls due when the clock has moved on by `delay`.
  void postAfter(std::chrono::nanoseconds delay, Task task);

  /// Runs all that is due, and what that makes due, until nothing is left. The clock stands still.
  void settle(const Runner& runner);

  /// Settles, then moves the clock by `duration`, running what falls due on the way in its order, and
  /// settling after each.
  void advance(std::chrono::nanoseconds duration, const Runner& runner);

  /// Whether the last settle() or advance() stopped before a task that was not ready.
  [[nodiscard]] bool isStopped() const { return isStopped_; }

  /// Goes on where it stopped, for an advance() to the time that it was to reach. Nothing when none stopped.
  void goOn(const Runner& runner);

  /// Drops all that is pending, unrun.
  void clear();

 private:
  struct Due {
    Task task;
    Condition isReady;
  };

  void run(const Runner& runner);
  [[nodiscard]] std::optional<Task> takeNext();

  std::mutex mutex_;
  std::deque<Due> due_;
  std::multimap<std::chrono::nanoseconds, Task> timers_;  // equal times keep their order
  std::chrono::nanoseconds now_{0};
  // The settling thread's own.
  std::optional<std::chrono::nanoseconds> until_;  // none: the clock stands still
  bool isStopped_ = false;
};

}  // namespace quorvantis::device
