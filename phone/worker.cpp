#include "phone/worker.h"

#include <utility>

namespace quorvantis::phone {

void Worker::work() {
  for (;;) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return isStopped_ || !jobs_.empty(); });
    if (isStopped_) return;
    const std::function<void()> job = std::move(jobs_.front());
    jobs_.pop_front();
    lock.unlock();
    job();
  }
}

void Worker::stop() {
  std::deque<std::function<void()>> dropped;
  const std::lock_guard lock(mutex_);
  isStopped_ = true;
  dropped.swap(jobs_);
  changed_.notify_all();
}

bool Worker::isStopped() const {
  const std::lock_guard lock(mutex_);
  return isStopped_;
}

void Worker::post(std::function<void()> job) {
  const std::lock_guard lock(mutex_);
  if (isStopped_) return;
  jobs_.push_back(std::move(job));
  changed_.notify_one();
}

}  // namespace quorvantis::phone
