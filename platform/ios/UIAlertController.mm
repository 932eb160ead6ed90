#include "platform/UIAlertController.h"

#import <UIKit/UIKit.h>

#include "platform/ios/bridge.h"

namespace quorvantis::platform {

using ios::objectOf;
using ios::retained;

UIAlertAction UIAlertAction::actionWithTitle(const NSString& title, UIAlertActionStyle style,
                                             std::function<void()> handler) {
  return retained<UIAlertAction>([::UIAlertAction actionWithTitle:objectOf(title)
                                                            style:static_cast<::UIAlertActionStyle>(style)
                                                          handler:^(::UIAlertAction* /*action*/) {
                                                            handler();
                                                          }]);
}

UIAlertController UIAlertController::alertControllerWithTitle(const NSString& title, const NSString& message,
                                                              UIAlertControllerStyle preferredStyle) {
  return retained<UIAlertController>([::UIAlertController
      alertControllerWithTitle:objectOf(title)
                       message:objectOf(message)
                preferredStyle:static_cast<::UIAlertControllerStyle>(preferredStyle)]);
}

void UIAlertController::addAction(const UIAlertAction& action) const {
  [static_cast<::UIAlertController*>(objectOf(*this)) addAction:objectOf(action)];
}

}  // namespace quorvantis::platform
