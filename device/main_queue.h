// The device's main queue and its virtual clock. Nothing runs by itself: the device's owner settles what is
// due, or moves the clock. Tasks run first come, first served.
//
// Threads: tasks may be posted from any thread; they run, and are destroyed, on the thread that settles (the
// main thread).
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
  /// Runs one task; the place to catch what a task throws or raises.
  using Runner = std::function<void(const Task& task)>;
  /// Whether a task whose turn has come can run. Called on the thread that settles; must not use the queue.
  using Condition = std::function<bool()>;

  /// Appends the task to what is due.
  void post(Task task);

  /// The same for a task that may have to wait, as for a person's answer: when its turn comes and `isReady`
  /// says no, settling stops before it. It keeps its place, and the tasks behind it wait, too.
  void postWhen(Condition isReady, Task task);

  /// The task becomes due when the clock has advanced by `delay`.
  void postAfter(std::chrono::nanoseconds delay, Task task);

  /// Runs everything that is due, and what that makes due, until nothing is left. The clock stands still.
  void settle(const Runner& runner);

  /// Settles, then advances the clock by `duration`, running what becomes due on the way in order, and
  /// settling after each.
  void advance(std::chrono::nanoseconds duration, const Runner& runner);

  /// Whether the last settle() or advance() stopped before a task that was not ready.
  [[nodiscard]] bool isStopped() const { return isStopped_; }

  /// Resumes where it stopped; an advance() continues to its target time. Does nothing when none stopped.
  void goOn(const Runner& runner);

  /// Drops all pending tasks without running them.
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
  // Used only by the settling thread.
  std::optional<std::chrono::nanoseconds> until_;  // nothing: the clock stands still
  bool isStopped_ = false;
};

}  // namespace quorvantis::device
