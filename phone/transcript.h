// What happened to a phone, line by line: one writer, many readers, each at its own pace. A reader is only a
// position in the list and costs nothing while it does not read.
//
// Threads: any.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <string>
#include <vector>

namespace quorvantis::phone {

class Transcript {
 public:
  /// Lines of one phone, each a JSON object without a line feed.
  struct Reading {
    std::string phone;  ///< identifies the phone
    std::size_t from = 1;
    std::vector<std::string> lines = {};  ///< the first has the number `from`
    std::size_t next = 1;                 ///< the number of the next line that the phone will have
    bool isOver = false;                  ///< no more lines will come
  };

  /// Starts over, for another phone.
  void begin(std::string phone);

  /// Returns the number of the first of them.
  std::size_t append(std::vector<std::string> lines);

  /// Wakes all waiting readers: no more lines will come.
  void end();

  /// The lines from the number `from` on, but no more of them than fill a screen or two.
  [[nodiscard]] Reading read(std::size_t from) const;

  /// The same, once there are any, or there is another phone than the named one, or the transcript is over,
  /// or the time has come.
  [[nodiscard]] Reading wait(const std::string& phone, std::size_t from,
                             std::chrono::steady_clock::time_point until) const;

 private:
  [[nodiscard]] Reading readLocked(std::size_t from) const;

  mutable std::mutex mutex_;
  mutable std::condition_variable changed_;
  std::string phone_;
  std::vector<std::string> lines_;
  bool isOver_ = false;
};

}  // namespace quorvantis::phone
