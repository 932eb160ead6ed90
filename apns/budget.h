// Memory for requests that are not finished: each connection has a little of its own, and all of them share a
// pool.
#pragma once

#include <atomic>
#include <cstddef>

namespace quorvantis::apns {

/// What all connections may keep together, besides their own. Any thread.
class MemoryPool {
 public:
  explicit MemoryPool(std::size_t bytes) : size_(bytes), left_(bytes) {}
  MemoryPool(const MemoryPool&) = delete;
  MemoryPool& operator=(const MemoryPool&) = delete;

  /// Takes all of it or nothing, and nothing when less than `rest` would be left.
  bool take(std::size_t bytes, std::size_t rest = 0);
  void give(std::size_t bytes) { left_ += bytes; }
  [[nodiscard]] std::size_t size() const { return size_; }

 private:
  const std::size_t size_;
  std::atomic<std::size_t> left_;
};

/// One connection's: its own, then what it borrows from the pool. One thread.
class Budget {
 public:
  /// `pool` outlives it.
  Budget(MemoryPool& pool, std::size_t own) : pool_(pool), limit_(own), own_(own) {}
  ~Budget() { pool_.give(limit_ - own_); }
  Budget(const Budget&) = delete;
  Budget& operator=(const Budget&) = delete;

  /// Takes all of it or nothing.
  bool take(std::size_t bytes);
  void give(std::size_t bytes);

 private:
  MemoryPool& pool_;
  std::size_t limit_;  ///< with what is borrowed
  std::size_t used_ = 0;
  const std::size_t own_;
};

}  // namespace quorvantis::apns
