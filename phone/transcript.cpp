#include "phone/transcript.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace quorvantis::phone {

namespace {

constexpr std::size_t kMostAtOnce = 256;

}  // namespace

void Transcript::begin(std::string phone) {
  const std::lock_guard lock(mutex_);
  phone_ = std::move(phone);
  lines_.clear();
  changed_.notify_all();
}

std::size_t Transcript::append(std::vector<std::string> lines) {
  const std::lock_guard lock(mutex_);
  const std::size_t first = lines_.size() + 1;
  std::move(lines.begin(), lines.end(), std::back_inserter(lines_));
  changed_.notify_all();
  return first;
}

void Transcript::end() {
  const std::lock_guard lock(mutex_);
  isOver_ = true;
  changed_.notify_all();
}

Transcript::Reading Transcript::read(std::size_t from) const {
  const std::lock_guard lock(mutex_);
  return readLocked(from);
}

Transcript::Reading Transcript::wait(const std::string& phone, std::size_t from,
                                     std::chrono::steady_clock::time_point until) const {
  std::unique_lock lock(mutex_);
  changed_.wait_until(lock, until, [&] { return isOver_ || phone != phone_ || lines_.size() >= from; });
  return readLocked(from);
}

Transcript::Reading Transcript::readLocked(std::size_t from) const {
  Reading reading{.phone = phone_, .from = from, .next = lines_.size() + 1, .isOver = isOver_};
  if (from > lines_.size()) return reading;
  const std::size_t count = std::min(kMostAtOnce, lines_.size() + 1 - from);
  const auto first = lines_.begin() + static_cast<std::ptrdiff_t>(from - 1);
  reading.lines.assign(first, first + static_cast<std::ptrdiff_t>(count));
  return reading;
}

}  // namespace quorvantis::phone
