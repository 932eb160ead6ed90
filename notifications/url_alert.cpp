// Push: the in-app alert whose button opens a notification's link.
#include "facade/Push.h"
#include "notifications/payload_keys.h"
#include "platform/UIAlertController.h"
#include "platform/UIWindow.h"

namespace quorvantis {

using platform::ConstantString;
using platform::NSDictionary;
using platform::NSString;
using platform::NSURL;
using platform::UIAlertAction;
using platform::UIAlertController;
using platform::UIApplication;
using platform::UIViewController;
using platform::UIWindow;

namespace {

constinit const ConstantString kOK{"OK"};

}  // namespace

void Push::presentURLAlert(const NSString& title, const NSDictionary& alert) {
  const UIWindow window = UIWindow::initWithFrame(platform::UIScreen::mainScreen().bounds());
  window.setRootViewController(UIViewController::new_());
  window.setWindowLevel(platform::UIWindowLevelAlert() + 1.0);

  const auto message = alert.objectForKey(payload::body).as<NSString>();
  const UIAlertController controller =
      UIAlertController::alertControllerWithTitle(title, message, platform::UIAlertControllerStyle::alert);
  // Nothing else holds the window: it stays on screen as long as this handler does.
  controller.addAction(UIAlertAction::actionWithTitle(
      kOK, platform::UIAlertActionStyle::default_,
      [push = platform::Ref<Push>::retain(this), window] { push->dismissURLAlert(window); }));

  window.makeKeyAndVisible();
  window.rootViewController().presentViewController(controller, true);
}

void Push::dismissURLAlert(const UIWindow& window) {
  const UIApplication application = UIApplication::sharedApplication();
  const NSURL url = NSURL::URLWithString(dirAAbrir);
  if (application.respondsToSelector(UIApplication::openURLSelector)) application.openURL(url);
  window.setHidden(true);
}

}  // namespace quorvantis
