#include "platform/NSJSONSerialization.h"

#include "platform/ios/bridge.h"

namespace quorvantis::platform {

Object NSJSONSerialization::JSONObjectWithData(const NSData& data, unsigned long options) {
  if (!data) return nullptr;
  return ios::retained([::NSJSONSerialization JSONObjectWithData:ios::objectOf(data)
                                                         options:static_cast<NSJSONReadingOptions>(options)
                                                           error:nullptr]);
}

}  // namespace quorvantis::platform
