#include "platform/Class.h"

#import <Foundation/Foundation.h>
#import <objc/objc-sync.h>
#import <objc/runtime.h>

namespace quorvantis::platform {

void objc_sync_enter(Class object) { ::objc_sync_enter(objc_getClass(object.name)); }

void objc_sync_exit(Class object) { ::objc_sync_exit(objc_getClass(object.name)); }

}  // namespace quorvantis::platform
