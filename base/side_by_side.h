// Distributes work on many items over the processor's cores. Main thread; the process must have no other.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace quorvantis::base {

/// Calls `work` for ranges of items, from `first` up to `end`, until all `count` are done, and `take` with
/// its results, in the items' order. With many items `work` runs in helper processes, so only its result
/// counts; `take` runs in this process. Throws what either throws.
void sideBySide(std::size_t count, const std::function<std::string(std::size_t first, std::size_t end)>& work,
                const std::function<void(const std::string&)>& take);

}  // namespace quorvantis::base
