#include "platform/CFUUID.h"

#import <CoreFoundation/CoreFoundation.h>

#include "platform/ios/bridge.h"

namespace quorvantis::platform {

CFUUID CFUUIDCreate() { return ios::adopted<CFUUID>((id)::CFUUIDCreate(nullptr)); }

NSString CFUUIDCreateString(const CFUUID& uuid) {
  return ios::adopted<NSString>((id)::CFUUIDCreateString(nullptr, static_cast<CFUUIDRef>(uuid.get())));
}

}  // namespace quorvantis::platform
