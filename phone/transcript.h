// What happened to a phone, line by line: one writer, many readers, each at its own pace. A reader is only a
// position in the list and costs nothing while it does not read.
//
// Threads: any.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "phone/shared_text.h"

namespace quorvantis::phone {

/// How much a transcript may hold.
struct Limits {
  std::size_t lines = 1'000'000;
  std::size_t bytes = std::size_t{256} << 20;
};

class Transcript {
 public:
  explicit Transcript(Limits limits = {}) : limits_(limits) {}

  struct Size {
    std::size_t lines = 0;
    std::size_t bytes = 0;
  };
  [[nodiscard]] Size size() const;
  [[nodiscard]] const Limits& limits() const { return limits_; }
  /// Whether it holds all that it may. More can still be added: what has begun is written down to its end.
  [[nodiscard]] bool isFull() const;

  /// Lines of one phone, each a JSON object without a line feed.
  struct Reading {
    std::string phone;  ///< identifies the phone
    std::size_t from = 1;
    std::vector<SharedText> lines = {};  ///< the first has the number `from`
    std::size_t next = 1;                ///< the number of the next line that the phone will have
    bool isOver = false;                 ///< no more lines will come
  };

  /// The lines that a phone has at a moment, to be read bit by bit, also when another phone has taken its
  /// place. One thread at a time.
  class Excerpt {
   public:
    /// The number of the first that was not taken yet.
    [[nodiscard]] std::size_t from() const { return from_; }
    /// The number that follows the last.
    [[nodiscard]] std::size_t next() const { return next_; }
    /// The next few of them, one at least; none when all have been taken.
    std::vector<SharedText> take();

   private:
    friend class Transcript;
    Excerpt(const Transcript& transcript, std::size_t from);

    const Transcript* transcript_;
    std::shared_ptr<const std::vector<SharedText>> lines_;
    std::size_t from_;
    std::size_t next_;
  };

  /// Starts over, for another phone.
  void begin(std::string phone);

  /// Returns the number of the first of them.
  std::size_t append(std::vector<SharedText> lines);

  /// Wakes all waiting readers: no more lines will come.
  void end();

  /// The lines from the number `from` on, but no more of them than fill a screen or two.
  [[nodiscard]] Reading read(std::size_t from) const;

  /// The lines from the number `from` on that there are now.
  [[nodiscard]] Excerpt excerpt(std::size_t from) const { return {*this, from}; }

  /// What read() gives, once there are any, or there is another phone than the named one, or the transcript
  /// is over, or the time has come.
  [[nodiscard]] Reading wait(const std::string& phone, std::size_t from,
                             std::chrono::steady_clock::time_point until) const;

 private:
  [[nodiscard]] Reading readLocked(std::size_t from) const;

  const Limits limits_;
  mutable std::mutex mutex_;
  mutable std::condition_variable changed_;
  std::string phone_;
  std::shared_ptr<std::vector<SharedText>> lines_ = std::make_shared<std::vector<SharedText>>();
  std::size_t bytes_ = 0;
  bool isOver_ = false;
};

}  // namespace quorvantis::phone
