#include "platform/NSArray.h"

#include "platform/ios/bridge.h"

namespace quorvantis::platform {

Object NSArray::objectAtIndex(std::size_t index) const {
  return ios::retained([ios::objectOf(*this) objectAtIndex:index]);
}

}  // namespace quorvantis::platform
