#include "platform/UIScreen.h"

#import <UIKit/UIKit.h>

#include "platform/ios/bridge.h"

namespace quorvantis::platform {

UIScreen UIScreen::mainScreen() { return ios::retained<UIScreen>([::UIScreen mainScreen]); }

CGRect UIScreen::bounds() const {
  if (!*this) return {};
  const ::CGRect bounds = [static_cast<::UIScreen*>(ios::objectOf(*this)) bounds];
  return {bounds.origin.x, bounds.origin.y, bounds.size.width, bounds.size.height};
}

}  // namespace quorvantis::platform
