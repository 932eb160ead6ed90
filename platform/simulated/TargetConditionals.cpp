#include "platform/TargetConditionals.h"

#include "device/device.h"

namespace quorvantis::platform {

bool targetIsSimulator() {
  return device::Device::current().build == device::Build::simulator;
}

}  // namespace quorvantis::platform
