// A command's arguments or input can't be used: what() says why, and how to fix it. The command then exits
// with status
// 2. Any thread.
#pragma once

#include <stdexcept>

namespace quorvantis::console {

class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace quorvantis::console
