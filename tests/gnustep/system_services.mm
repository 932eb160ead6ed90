// The phone's services in plain C over the device: sound, identifiers, the main queue, the kind of build.
#import <AudioToolbox/AudioToolbox.h>
#import <CoreFoundation/CoreFoundation.h>
#include <TargetConditionals.h>
#include <dispatch/dispatch.h>

#include "tests/gnustep/standins.h"

using quorvantis::standins::deviceInUse;
using quorvantis::standins::holdBlock;

struct dispatch_queue_s {};

extern "C" {

dispatch_queue_s _dispatch_main_q;

int quorvantisTargetIsSimulator() {
  return deviceInUse()->build == quorvantis::device::Build::simulator ? 1 : 0;
}

void AudioServicesPlaySystemSound(SystemSoundID sound) { deviceInUse()->playSystemSound(sound); }

CFUUIDRef CFUUIDCreate(CFAllocatorRef) {
  const void* text = [quorvantis::standins::stringFrom(deviceInUse()->newUUID()) retain];
  return static_cast<CFUUIDRef>(text);
}

CFStringRef CFUUIDCreateString(CFAllocatorRef, CFUUIDRef uuid) {
  const void* text = [(id)uuid copy];
  return static_cast<CFStringRef>(text);
}

dispatch_time_t dispatch_time(dispatch_time_t when, int64_t delta) {
  return when + static_cast<dispatch_time_t>(delta);
}

void dispatch_async(dispatch_queue_t, dispatch_block_t block) {
  deviceInUse()->queue.post([held = holdBlock(block)] { quorvantis::standins::callBlock(held); });
}

void dispatch_after(dispatch_time_t when, dispatch_queue_t, dispatch_block_t block) {
  deviceInUse()->queue.postAfter(std::chrono::nanoseconds(when),
                                 [held = holdBlock(block)] { quorvantis::standins::callBlock(held); });
}

}  // extern "C"
