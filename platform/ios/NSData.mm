#include "platform/NSData.h"

#include "platform/ios/bridge.h"

namespace quorvantis::platform {

std::size_t NSData::length() const { return [static_cast<::NSData*>(ios::objectOf(*this)) length]; }

const unsigned char* NSData::bytes() const {
  return static_cast<const unsigned char*>([static_cast<::NSData*>(ios::objectOf(*this)) bytes]);
}

NSString NSData::description() const { return ios::retained<NSString>([ios::objectOf(*this) description]); }

}  // namespace quorvantis::platform
