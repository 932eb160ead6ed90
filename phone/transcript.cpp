#include "phone/transcript.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace quorvantis::phone {

namespace {

constexpr std::size_t kMostAtOnce = 256;

/// Those from the number `from` to before `next`, or the first few of them.
std::vector<SharedText> someOf(const std::vector<SharedText>& lines, std::size_t from, std::size_t next) {
  std::vector<SharedText> some;
  std::size_t bytes = 0;
  for (; from < next && some.size() < kMostAtOnce && bytes < kMostBytesAtOnce; ++from) {
    some.push_back(lines[from - 1]);
    bytes += some.back()->size();
  }
  return some;
}

}  // namespace

Transcript::Excerpt::Excerpt(const Transcript& transcript, std::size_t from)
    : transcript_(&transcript), from_(from) {
  const std::lock_guard lock(transcript.mutex_);
  lines_ = transcript.lines_;
  next_ = std::max(from, lines_->size() + 1);
}

std::vector<SharedText> Transcript::Excerpt::take() {
  const std::lock_guard lock(transcript_->mutex_);
  std::vector<SharedText> some = someOf(*lines_, from_, next_);
  from_ += some.size();
  return some;
}

Transcript::Size Transcript::size() const {
  const std::lock_guard lock(mutex_);
  return {lines_->size(), bytes_};
}

bool Transcript::isFull() const {
  const Size now = size();
  return now.lines >= limits_.lines || now.bytes >= limits_.bytes;
}

void Transcript::begin(std::string phone) {
  const std::lock_guard lock(mutex_);
  bytes_ = 0;
  phone_ = std::move(phone);
  lines_ = std::make_shared<std::vector<SharedText>>();
  changed_.notify_all();
}

std::size_t Transcript::append(std::vector<SharedText> lines) {
  const std::lock_guard lock(mutex_);
  const std::size_t first = lines_->size() + 1;
  for (const SharedText& line : lines) bytes_ += line->size();
  std::move(lines.begin(), lines.end(), std::back_inserter(*lines_));
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
  changed_.wait_until(lock, until, [&] { return isOver_ || phone != phone_ || lines_->size() >= from; });
  return readLocked(from);
}

Transcript::Reading Transcript::readLocked(std::size_t from) const {
  Reading reading{.phone = phone_, .from = from, .next = lines_->size() + 1, .isOver = isOver_};
  reading.lines = someOf(*lines_, from, reading.next);
  return reading;
}

}  // namespace quorvantis::phone
