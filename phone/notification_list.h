// The application's notifications in the system's list. One thread.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "phone/shared_text.h"

namespace quorvantis::phone {

/// With which a provider replaces an earlier notification; nothing: none.
using CollapseId = std::optional<std::string>;

class NotificationList {
 public:
  /// The number of the one that is added next; they count from 1.
  [[nodiscard]] std::int64_t next() const { return last_ + 1; }

  /// `line` is the transcript's that shows it. One with the same id must have been removed before.
  void add(const CollapseId& collapseId, SharedText line) {
    listed_.emplace(++last_, Entry{collapseId, std::move(line)});
    if (collapseId) byCollapseId_[*collapseId] = last_;
  }

  /// Returns whether it was there.
  bool remove(std::int64_t number) {
    const auto found = listed_.find(number);
    if (found == listed_.end()) return false;
    if (found->second.collapseId) byCollapseId_.erase(*found->second.collapseId);
    listed_.erase(found);
    return true;
  }

  /// The transcript's line that shows it; null: it is not listed.
  [[nodiscard]] SharedText lineOf(std::int64_t number) const {
    const auto found = listed_.find(number);
    return found == listed_.end() ? nullptr : found->second.line;
  }

  /// The numbers of all that are listed, from the first on.
  [[nodiscard]] std::vector<std::int64_t> numbers() const {
    std::vector<std::int64_t> numbers;
    for (const auto& [number, entry] : listed_) numbers.push_back(number);
    return numbers;
  }

  /// The notification that a new one with this id replaces.
  [[nodiscard]] std::optional<std::int64_t> find(const CollapseId& collapseId) const {
    const auto found = collapseId ? byCollapseId_.find(*collapseId) : byCollapseId_.end();
    return found == byCollapseId_.end() ? std::nullopt : std::optional(found->second);
  }

 private:
  struct Entry {
    CollapseId collapseId;
    SharedText line;
  };

  std::map<std::int64_t, Entry> listed_;
  std::unordered_map<std::string, std::int64_t> byCollapseId_;
  std::int64_t last_ = 0;
};

}  // namespace quorvantis::phone
