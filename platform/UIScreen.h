// The phone's screen. Main thread.
#pragma once

#include "platform/Object.h"

namespace quorvantis::platform {

using CGFloat = double;

/// In points.
struct CGRect {
  CGFloat x, y, width, height;
};

class QUORVANTIS_PUSH_API UIScreen : public Object {
 public:
  using Object::Object;

  static UIScreen mainScreen();

  [[nodiscard]] CGRect bounds() const;
};

}  // namespace quorvantis::platform
