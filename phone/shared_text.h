#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <utility>

namespace quorvantis::phone {

/// A line that is kept: once, however many read it, and without spare room.
using SharedText = std::shared_ptr<const std::string>;

/// What is read of many lines at a time: more only if one line has more.
inline constexpr std::size_t kMostBytesAtOnce = std::size_t{64} * 1024;

inline SharedText share(std::string text) {
  text.shrink_to_fit();
  return std::make_shared<const std::string>(std::move(text));
}

}  // namespace quorvantis::phone
