#include "platform/NSURL.h"

#include "platform/ios/bridge.h"

namespace quorvantis::platform {

NSURL NSURL::URLWithString(const NSString& text) {
  if (!text) return nullptr;
  return ios::retained<NSURL>([::NSURL URLWithString:ios::objectOf(text)]);
}

}  // namespace quorvantis::platform
