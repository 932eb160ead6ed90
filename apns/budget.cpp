#include "apns/budget.h"

namespace quorvantis::apns {
namespace {

constexpr std::size_t kPiece = std::size_t{16} * 1024;  // borrowed at once, so that connections rarely meet

}  // namespace

bool MemoryPool::take(std::size_t bytes, std::size_t rest) {
  std::size_t left = left_;
  do {
    if (left < bytes || left - bytes < rest) return false;
  } while (!left_.compare_exchange_weak(left, left - bytes));
  return true;
}

bool Budget::take(std::size_t bytes) {
  if (used_ + bytes > limit_) {
    const std::size_t pieces = (used_ + bytes - limit_ + kPiece - 1) / kPiece;
    if (!pool_.take(pieces * kPiece)) return false;
    limit_ += pieces * kPiece;
  }
  used_ += bytes;
  return true;
}

void Budget::give(std::size_t bytes) {
  used_ -= bytes;
  // Not to the last byte, or the next request would borrow again.
  while (limit_ > own_ && used_ + 2 * kPiece <= limit_) {
    limit_ -= kPiece;
    pool_.give(kPiece);
  }
}

}  // namespace quorvantis::apns
