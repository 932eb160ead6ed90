#include "platform/UIViewController.h"

#import <UIKit/UIKit.h>

#include "platform/ios/bridge.h"

namespace quorvantis::platform {

UIViewController UIViewController::new_() { return ios::adopted<UIViewController>([::UIViewController new]); }

void UIViewController::presentViewController(const UIViewController& viewControllerToPresent,
                                             bool animated) const {
  [static_cast<::UIViewController*>(ios::objectOf(*this))
      presentViewController:ios::objectOf(viewControllerToPresent)
                   animated:animated
                 completion:nullptr];
}

}  // namespace quorvantis::platform
