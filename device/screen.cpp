#include "device/screen.h"

#include <utility>

#include "device/events.h"

namespace quorvantis::device {

int Screen::present(Alert alert) {
  const int number = ++shown_;
  record_.add(events::alertShown(number, alert.title, alert.message, alert.buttons, alert.windowLevel));
  alerts_.emplace(number, std::move(alert));
  return number;
}

bool Screen::tap(int number) {
  const auto dismissed = alerts_.extract(number);
  if (dismissed.empty()) return false;
  if (dismissed.mapped().onTap) dismissed.mapped().onTap();
  return true;
}

void Screen::hide(int number) {
  record_.add(events::alertHidden(number));
  alerts_.erase(number);
}

const Alert* Screen::find(int number) const {
  const auto alert = alerts_.find(number);
  return alert == alerts_.end() ? nullptr : &alert->second;
}

std::vector<int> Screen::alerts() const {
  std::vector<int> numbers;
  for (const auto& [number, alert] : alerts_) numbers.push_back(number);
  return numbers;
}

void Screen::clear() {
  const auto gone = std::exchange(alerts_, {});
  shown_ = 0;
}

}  // namespace quorvantis::device
