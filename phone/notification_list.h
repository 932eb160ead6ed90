// The notifications of the application that the system shows in its list. One thread.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace quorvantis::phone {

/// By which a provider lets a notification take an earlier one's place; nothing: by none.
using CollapseId = std::optional<std::string>;

class NotificationList {
 public:
  /// Returns its number; they count from 1.
  std::int64_t add(CollapseId collapseId) {
    listed_.emplace(++last_, std::move(collapseId));
    return last_;
  }
  /// Whether it was there.
  bool remove(std::int64_t number) { return listed_.erase(number) > 0; }

  /// The one whose place a notification takes that comes with this id.
  [[nodiscard]] std::optional<std::int64_t> find(const CollapseId& collapseId) const {
    if (!collapseId) return std::nullopt;
    for (const auto& [number, its] : listed_) {
      if (its == collapseId) return number;
    }
    return std::nullopt;
  }

 private:
  std::map<std::int64_t, CollapseId> listed_;
  std::int64_t last_ = 0;
};

}  // namespace quorvantis::phone
