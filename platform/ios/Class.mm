#include "platform/Class.h"

#import <QuorvantisPush/QuorvantisPush.h>
#import <objc/objc-sync.h>
#import <objc/runtime.h>

#include <string_view>

#include "platform/ios/bridge.h"

namespace quorvantis::platform {

::Class ios::runtimeClass(Class aClass) {
  return std::string_view(aClass.name) == "Push" ? [::Push class] : objc_getClass(aClass.name);
}

void objc_sync_enter(Class object) { ::objc_sync_enter(ios::runtimeClass(object)); }

void objc_sync_exit(Class object) { ::objc_sync_exit(ios::runtimeClass(object)); }

}  // namespace quorvantis::platform
