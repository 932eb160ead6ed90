// What a client makes the service do without sending requests. One thread.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quorvantis::apns {

/// The frames in what a client sends after HTTP/2's preface, of any type: also those that nghttp2 does not
/// report, because it ignores them.
class FrameMeter {
 public:
  /// What the frames weigh that begin in these bytes, which continue those given before: each one, and more
  /// for a header block, which is compressed.
  std::size_t weigh(std::string_view bytes);

 private:
  static constexpr std::size_t kPrefaceBytes = 24;

  std::size_t toSkip_ = kPrefaceBytes;
  std::array<std::uint8_t, 4> head_{};  // length and type
  std::size_t headSize_ = 0;
};

/// How much of that is borne: some at any time, more with time, and what belongs to requests.
class Allowance {
 public:
  using Clock = std::chrono::steady_clock;

  /// False when it is used up.
  bool spend(std::size_t weight, Clock::time_point now);
  /// A request was finished.
  void earn();

 private:
  static constexpr double kMost = 10'000;
  static constexpr double kEachSecond = 1000;
  static constexpr double kEachRequest = 100;

  double left_ = kMost;
  Clock::time_point last_ = Clock::now();
};

}  // namespace quorvantis::apns
