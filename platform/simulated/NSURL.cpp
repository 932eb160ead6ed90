#include "platform/NSURL.h"

#include "device/device.h"
#include "device/text.h"
#include "platform/simulated/values.h"

namespace quorvantis::platform {

NSURL NSURL::URLWithString(const NSString& text) {
  // The first that the platform asks of it.
  const auto* string = simulated::receiver<simulated::StringInstance>(text, {"length"});
  if (string == nullptr) return nullptr;
  const auto url = device::urlFrom(string->text, device::Device::current().facts.systemVersion);
  return simulated::stringFrom(url).as<NSURL>();
}

}  // namespace quorvantis::platform
