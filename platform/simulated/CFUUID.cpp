#include "platform/CFUUID.h"

#include "device/device.h"

namespace quorvantis::platform {

CFUUID CFUUIDCreate() {
  return NSString::stringWithUTF8String(device::Device::current().newUUID()).as<CFUUID>();
}

NSString CFUUIDCreateString(const CFUUID& uuid) {
  return uuid.as<NSString>();
}

}  // namespace quorvantis::platform
