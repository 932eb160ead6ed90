#include "platform/AudioServices.h"

#import <AudioToolbox/AudioToolbox.h>

namespace quorvantis::platform {

void AudioServicesPlaySystemSound(SystemSoundID sound) { ::AudioServicesPlaySystemSound(sound); }

}  // namespace quorvantis::platform
