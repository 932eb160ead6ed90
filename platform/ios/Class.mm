#include "platform/Class.h"

#import <objc/objc-sync.h>

#include "platform/ios/bridge.h"

namespace quorvantis::platform {

void objc_sync_enter(Class object) { ::objc_sync_enter(ios::runtimeClass(object)); }

void objc_sync_exit(Class object) { ::objc_sync_exit(ios::runtimeClass(object)); }

}  // namespace quorvantis::platform
