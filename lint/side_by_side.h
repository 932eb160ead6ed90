// Spreads work on many items over the processor's cores. Main thread; the process has no other.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace quorvantis::lint {

/// Has `work` done for the items from `first` up to `end`, over and over until all of `count` are done, and
/// `take` called with what it gave, in the items' order. With many items `work` runs in helper processes, so
/// all that counts is what it returns; `take` runs here. Throws what either throws.
void sideBySide(std::size_t count, const std::function<std::string(std::size_t first, std::size_t end)>& work,
                const std::function<void(const std::string&)>& take);

}  // namespace quorvantis::lint
