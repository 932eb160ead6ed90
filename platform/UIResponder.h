// UIKit's base of the objects that answer application events. Main thread.
#pragma once

#include "platform/NSObject.h"

namespace quorvantis::platform {

class QUORVANTIS_PUSH_API UIResponder : public NSObject {
 protected:
  using NSObject::NSObject;
};

}  // namespace quorvantis::platform
