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
  postWhen(nullptr, std::move(task));
}

void MainQueue::postWhen(Condition isReady, Task task) {
  const std::lock_guard lock(mutex_);
  due_.push_back({std::move(task), std::move(isReady)});
}

void MainQueue::postAfter(nanoseconds delay, Task task) {
  const std::lock_guard lock(mutex_);
  timers_.emplace(saturatingSum(now_, std::max(delay, nanoseconds(0))), std::move(task));
}

void MainQueue::settle(const Runner& runner) {
  until_.reset();
  run(runner);
}

void MainQueue::advance(nanoseconds duration, const Runner& runner) {
  until_ = saturatingSum(now_, duration);
  run(runner);
}

void MainQueue::goOn(const Runner& runner) {
  if (isStopped_) run(runner);
}

void MainQueue::clear() {
  std::deque<Due> due;
  std::multimap<nanoseconds, Task> timers;
  isStopped_ = false;
  const std::lock_guard lock(mutex_);  // released before the tasks are destroyed, which may post
  due_.swap(due);
  timers_.swap(timers);
}

void MainQueue::run(const Runner& runner) {
  isStopped_ = false;
  while (const std::optional<Task> task = takeNext()) runner(*task);
  if (isStopped_ || !until_) return;
  const std::lock_guard lock(mutex_);
  // The clock only matters to timers: it starts over without any, so that it never overflows.
  now_ = timers_.empty() ? nanoseconds(0) : *until_;
}

/// The first task that is due; if there is none, the next timer's, with the clock moved to its time.
std::optional<MainQueue::Task> MainQueue::takeNext() {
  const std::lock_guard lock(mutex_);
  if (!due_.empty()) {
    Due& first = due_.front();
    isStopped_ = first.isReady && !first.isReady();
    if (isStopped_) return std::nullopt;
    Task task = std::move(first.task);
    due_.pop_front();
    return task;
  }
  const auto timer = timers_.begin();
  if (!until_ || timer == timers_.end() || timer->first > *until_) return std::nullopt;
  now_ = timer->first;
  Task task = std::move(timer->second);
  timers_.erase(timer);
  return task;
}

}  // namespace quorvantis::device
