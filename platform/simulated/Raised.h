// What the simulated device's runtime raises: a message was not understood, a value rejected, or an index out
// of range. A raise passes through the library to whoever called it.
#pragma once

#include <exception>

#include "platform/Selector.h"
#include "platform/export.h"

namespace quorvantis::platform::simulated {

class QUORVANTIS_PUSH_API Raised : public std::exception {
 public:
  explicit Raised(Selector selector) : selector_(selector) {}

  /// The message that failed.
  [[nodiscard]] Selector selector() const { return selector_; }
  [[nodiscard]] const char* what() const noexcept override { return selector_.name.data(); }

 private:
  Selector selector_;
};

}  // namespace quorvantis::platform::simulated
