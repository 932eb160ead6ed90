// What was given to a command can't be used as it is: what() says why, and how to mend it. The command's
// status is then 2. Any thread.
#pragma once

#include <stdexcept>

namespace quorvantis::console {

class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace quorvantis::console
