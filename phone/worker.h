// The one thread on which a phone is used, and how other threads get at it.
//
// Threads: any, but for work(), which makes its caller that thread.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <type_traits>
#include <utility>

namespace quorvantis::phone {

/// What was asked is not done any more, since the program ends.
class Stopped : public std::runtime_error {
 public:
  Stopped() : std::runtime_error("the phone is being switched off") {}
};

class Worker {
 public:
  /// Does what it is given, one job after the other, on the calling thread, until stop().
  void work();

  /// Lets work() return when the job in hand is done. Those that wait for others get Stopped.
  void stop();

  [[nodiscard]] bool isStopped() const;

  /// Does the job on the worker's thread and returns what it returns. What it throws is thrown here. Not to
  /// be called by a job. Throws Stopped.
  template <class Job>
  auto run(Job job) -> std::invoke_result_t<Job> {
    auto task = std::make_shared<std::packaged_task<std::invoke_result_t<Job>()>>(std::move(job));
    auto result = task->get_future();
    post([task = std::move(task)] { (*task)(); });
    try {
      return result.get();
    } catch (const std::future_error&) {
      throw Stopped();
    }
  }

  /// Has the job done, some time; what it throws ends the program.
  void post(std::function<void()> job);

 private:
  mutable std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<std::function<void()>> jobs_;
  bool isStopped_ = false;
};

}  // namespace quorvantis::phone
