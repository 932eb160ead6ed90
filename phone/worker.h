// The one thread on which a phone is used, and how other threads get work done on it.
//
// Threads: any, except for work(), which makes its caller that thread.
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

/// A job was dropped because the program is shutting down.
class Stopped : public std::runtime_error {
 public:
  Stopped() : std::runtime_error("the phone is being switched off") {}
};

class Worker {
 public:
  /// Runs jobs, one after the other, on the calling thread, until stop().
  void work();

  /// Makes work() return when the current job is done. Callers that wait for other jobs get Stopped.
  void stop();

  [[nodiscard]] bool isStopped() const;

  /// Runs the job on the worker's thread and returns what it returns. What it throws is thrown here. Must not
  /// be called from a job. Throws Stopped.
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

  /// Queues the job and returns; what the job throws ends the program.
  void post(std::function<void()> job);

 private:
  mutable std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<std::function<void()>> jobs_;
  bool isStopped_ = false;
};

}  // namespace quorvantis::phone
