#include "phone/tokens.h"

#include <chrono>

namespace quorvantis::phone {

void Tokens::begin(const std::optional<std::string>& token) {
  const std::lock_guard lock(mutex_);
  earlier_.clear();
  current_ = token;
}

void Tokens::change(const std::optional<std::string>& token) {
  using std::chrono::milliseconds;
  const std::lock_guard lock(mutex_);
  if (token == current_) return;
  if (current_) {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    earlier_[*current_] = std::chrono::duration_cast<milliseconds>(now).count();
  }
  current_ = token;
}

std::optional<Tokens::Known> Tokens::find(std::string_view token) const {
  const std::lock_guard lock(mutex_);
  if (token == current_) return Known{};
  const auto found = earlier_.find(token);
  return found == earlier_.end() ? std::nullopt : std::optional(Known{found->second});
}

}  // namespace quorvantis::phone
