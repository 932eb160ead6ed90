// The application's notifications in the system's list. One thread.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace quorvantis::phone {

/// With which a provider replaces an earlier notification; nothing: none.
using CollapseId = std::optional<std::string>;

class NotificationList {
 public:
  /// Returns its number; they count from 1.
  std::int64_t add(CollapseId collapseId) {
    listed_.emplace(++last_, std::move(collapseId));
    return last_;
  }
  /// Returns whether it was there.
  bool remove(std::int64_t number) { return listed_.erase(number) > 0; }

  /// The notification that a new one with this id replaces.
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
