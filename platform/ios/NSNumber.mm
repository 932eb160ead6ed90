#include "platform/NSNumber.h"

#include "platform/ios/bridge.h"

namespace quorvantis::platform {

NSInteger NSNumber::integerValue() const { return [ios::objectOf(*this) integerValue]; }

}  // namespace quorvantis::platform
