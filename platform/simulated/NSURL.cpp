#include "platform/NSURL.h"

#include "device/device.h"
#include "device/text.h"
#include "platform/simulated/values.h"

namespace quorvantis::platform {

NSURL NSURL::URLWithString(const NSString& text) {
  const auto characters = simulated::textOf(text);
  if (!characters) return nullptr;
  const auto url = device::urlFrom(*characters, device::Device::current().facts.systemVersion);
  return simulated::stringFrom(url).as<NSURL>();
}

}  // namespace quorvantis::platform
