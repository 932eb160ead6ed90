#include "platform/QuorvantisLogger.h"

#import <QuorvantisUtils/QuorvantisUtils.h>

#include "platform/ios/bridge.h"

namespace quorvantis::platform {

void QuorvantisLogger::info(const NSString& tag, const NSString& withMessage) {
  [::QuorvantisLogger info:ios::objectOf(tag) withMessage:ios::objectOf(withMessage)];
}

}  // namespace quorvantis::platform
