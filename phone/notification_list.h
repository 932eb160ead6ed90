// The application's notifications in the system's list. One thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>

namespace quorvantis::phone {

/// With which a provider replaces an earlier notification; nothing: none.
using CollapseId = std::optional<std::string>;

class NotificationList {
 public:
  /// Returns its number; they count from 1. One with the same id must have been removed before.
  std::int64_t add(const CollapseId& collapseId) {
    listed_.emplace(++last_, collapseId);
    if (collapseId) byCollapseId_[*collapseId] = last_;
    return last_;
  }

  /// Returns whether it was there.
  bool remove(std::int64_t number) {
    const auto found = listed_.find(number);
    if (found == listed_.end()) return false;
    if (found->second) byCollapseId_.erase(*found->second);
    listed_.erase(found);
    return true;
  }

  /// The notification that a new one with this id replaces.
  [[nodiscard]] std::optional<std::int64_t> find(const CollapseId& collapseId) const {
    const auto found = collapseId ? byCollapseId_.find(*collapseId) : byCollapseId_.end();
    return found == byCollapseId_.end() ? std::nullopt : std::optional(found->second);
  }

 private:
  std::unordered_map<std::int64_t, CollapseId> listed_;
  std::unordered_map<std::string, std::int64_t> byCollapseId_;
  std::int64_t last_ = 0;
};

}  // namespace quorvantis::phone
