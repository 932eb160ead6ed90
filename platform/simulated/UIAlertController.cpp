#include "platform/UIAlertController.h"

#include "platform/simulated/UIKitInstances.h"
#include "platform/simulated/values.h"

namespace quorvantis::platform {

using namespace simulated;

UIAlertAction UIAlertAction::actionWithTitle(const NSString& title, UIAlertActionStyle /*style*/,
                                             std::function<void()> handler) {
  return makeInstance<UIAlertAction, AlertActionInstance>(textOf(title).value_or(""), std::move(handler));
}

UIAlertController UIAlertController::alertControllerWithTitle(const NSString& title, const NSString& message,
                                                              UIAlertControllerStyle /*preferredStyle*/) {
  return makeInstance<UIAlertController, AlertControllerInstance>(title, message);
}

void UIAlertController::addAction(const UIAlertAction& action) const {
  if (*this) known<AlertControllerInstance>(*this)->actions.push_back(action);
}

}  // namespace quorvantis::platform
