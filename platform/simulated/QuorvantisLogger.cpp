#include "platform/QuorvantisLogger.h"

#include "device/device.h"
#include "device/events.h"
#include "platform/simulated/values.h"

namespace quorvantis::platform::QuorvantisLogger {

void info(const NSString& tag, const NSString& withMessage) {
  device::Device::current().record.add(
      device::events::log(simulated::textOf(tag), simulated::textOf(withMessage)));
}

}  // namespace quorvantis::platform::QuorvantisLogger
