#include "device/main_queue.h"

#include <algorithm>
#include <utility>

namespace quorvantis::device {

namespace {

using std::chrono::nanoseconds;

nanoseconds saturatingSum(nanoseconds a, nanoseconds b) {
  return b > nanoseconds::max() - a ? nanoseconds::max() : a + b;
}

}  // namespace

void MainQueue::post(Task task) {
  const std::lock_guard lock(mutex_);
  due_.push_back(std::move(task));
}

void MainQueue::postAfter(nanoseconds delay, Task task) {
  const std::lock_guard lock(mutex_);
  timers_.emplace(saturatingSum(now_, std::max(delay, nanoseconds(0))), std::move(task));
}

void MainQueue::settle(const Runner& runner) {
  while (const std::optional<Task> task = takeDue()) runner(*task);
}

void MainQueue::advance(nanoseconds duration, const Runner& runner) {
  settle(runner);
  const nanoseconds until = saturatingSum(now_, duration);
  while (const std::optional<Task> task = takeTimer(until)) {
    runner(*task);
    settle(runner);
  }
  const std::lock_guard lock(mutex_);
  // Only the time that is left for a timer counts; begun anew without one, the clock never comes to its end.
  now_ = timers_.empty() ? nanoseconds(0) : until;
}

void MainQueue::clear() {
  std::deque<Task> due;
  std::multimap<nanoseconds, Task> timers;
  const std::lock_guard lock(mutex_);  // let go before the tasks: what they hold may post
  due_.swap(due);
  timers_.swap(timers);
}

std::optional<MainQueue::Task> MainQueue::takeDue() {
  const std::lock_guard lock(mutex_);
  if (due_.empty()) return std::nullopt;
  Task task = std::move(due_.front());
  due_.pop_front();
  return task;
}

std::optional<MainQueue::Task> MainQueue::takeTimer(nanoseconds until) {
  const std::lock_guard lock(mutex_);
  const auto first = timers_.begin();
  if (first == timers_.end() || first->first > until) return std::nullopt;
  now_ = first->first;
  Task task = std::move(first->second);
  timers_.erase(first);
  return task;
}

}  // namespace quorvantis::device
