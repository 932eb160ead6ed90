// How a command ends: the statuses of the tool, and what is said of an error.
#pragma once

#include <functional>
#include <string>

namespace quorvantis::tool {

inline constexpr int kFailed = 1;    ///< something failed, or a problem was found
inline constexpr int kUnusable = 2;  ///< the arguments or the input can't be used

/// Does a command's work and returns its status. What it throws is said on standard error, after all that it
/// has printed: a line of `scenario`, the file that the command reads, is named as compilers do.
int statusOf(const std::function<int()>& work, const std::string& scenario = "");

}  // namespace quorvantis::tool
