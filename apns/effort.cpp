#include "apns/effort.h"

#include <algorithm>

namespace quorvantis::apns {
namespace {

constexpr std::size_t kFrameHeadBytes = 9;  // RFC 9113, section 4.1
constexpr std::uint8_t kHeadersType = 1;
constexpr std::uint8_t kContinuationType = 9;
constexpr std::size_t kCompressedBytes = 32;  // that weigh as much as a frame

}  // namespace

std::size_t FrameMeter::weigh(std::string_view bytes) {
  std::size_t weight = 0;
  while (!bytes.empty()) {
    if (toSkip_ > 0) {
      const std::size_t skipped = std::min(toSkip_, bytes.size());
      toSkip_ -= skipped;
      bytes.remove_prefix(skipped);
      continue;
    }
    head_[headSize_++] = static_cast<std::uint8_t>(bytes.front());
    bytes.remove_prefix(1);
    if (headSize_ < head_.size()) continue;
    headSize_ = 0;
    const std::size_t length =
        std::size_t{head_[0]} << 16U | std::size_t{head_[1]} << 8U | std::size_t{head_[2]};
    const bool isCompressed = head_[3] == kHeadersType || head_[3] == kContinuationType;
    weight += 1 + (isCompressed ? length / kCompressedBytes : 0);
    toSkip_ = kFrameHeadBytes - head_.size() + length;
  }
  return weight;
}

bool Allowance::spend(std::size_t weight, Clock::time_point now) {
  const std::chrono::duration<double> passed = now - last_;
  last_ = now;
  left_ = std::min(kMost, left_ + passed.count() * kEachSecond) - static_cast<double>(weight);
  return left_ >= 0;
}

void Allowance::earn() {
  left_ = std::min(kMost, left_ + kEachRequest);
}

}  // namespace quorvantis::apns
