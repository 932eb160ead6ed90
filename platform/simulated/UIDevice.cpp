#include "platform/UIDevice.h"

#include "device/device.h"
#include "platform/simulated/Instance.h"

namespace quorvantis::platform {

namespace {

NSString fact(const UIDevice& receiver, std::string device::Facts::*text) {
  return receiver ? NSString::stringWithUTF8String(device::Device::current().facts.*text) : NSString();
}

}  // namespace

UIDevice UIDevice::currentDevice() {
  static const auto& device = *new UIDevice(simulated::makeInstance<UIDevice, simulated::Instance>());
  return device;
}

NSString UIDevice::systemVersion() const {
  return fact(*this, &device::Facts::systemVersion);
}

NSString UIDevice::name() const {
  return fact(*this, &device::Facts::name);
}

NSString UIDevice::model() const {
  return fact(*this, &device::Facts::model);
}

}  // namespace quorvantis::platform
