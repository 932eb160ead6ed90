// The phone. Main thread.
#pragma once

#include "platform/NSString.h"

namespace quorvantis::platform {

class QUORVANTIS_PUSH_API UIDevice : public Object {
 public:
  using Object::Object;

  static UIDevice currentDevice();

  [[nodiscard]] NSString systemVersion() const;
  [[nodiscard]] NSString name() const;
  [[nodiscard]] NSString model() const;
};

}  // namespace quorvantis::platform
