#include "platform/AudioServices.h"

#include "device/device.h"

namespace quorvantis::platform {

void AudioServicesPlaySystemSound(SystemSoundID sound) {
  device::Device::current().playSystemSound(sound);
}

}  // namespace quorvantis::platform
