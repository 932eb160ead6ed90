// What a window shows. Main thread.
#pragma once

#include "platform/Object.h"

namespace quorvantis::platform {

class QUORVANTIS_PUSH_API UIViewController : public Object {
 public:
  using Object::Object;

  /// A plain one (`new`, a keyword here).
  static UIViewController new_();

  /// presentViewController:animated:completion:, with no completion.
  void presentViewController(const UIViewController& viewControllerToPresent, bool animated) const;
};

}  // namespace quorvantis::platform
