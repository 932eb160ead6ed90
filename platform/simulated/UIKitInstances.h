// The simulated device's windows, view controllers and alerts as objects. Main thread.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "json/value.h"
#include "platform/UIAlertController.h"
#include "platform/UIWindow.h"
#include "platform/simulated/Instance.h"
#include "platform/simulated/values.h"

namespace quorvantis::platform::simulated {

class WindowInstance;

class ViewControllerInstance : public Instance {
 public:
  WindowInstance* window = nullptr;  ///< whose root it is
};

class AlertControllerInstance final : public ViewControllerInstance {
 public:
  AlertControllerInstance(const Object& itsTitle, const Object& itsMessage)
      : title(valueFrom(itsTitle).value_or(nullptr)), message(valueFrom(itsMessage).value_or(nullptr)) {}

  json::Value title, message;
  std::vector<UIAlertAction> actions;
};

class AlertActionInstance final : public Instance {
 public:
  AlertActionInstance(std::string itsTitle, std::function<void()> itsHandler)
      : title(std::move(itsTitle)), handler(std::move(itsHandler)) {}

  std::string title;
  std::function<void()> handler;
};

class WindowInstance final : public Instance {
 public:
  explicit WindowInstance(bool itFillsTheScreen) : fillsScreen(itFillsTheScreen) {}
  ~WindowInstance() override { setRoot(nullptr); }
  void setRoot(UIViewController controller);

  UIViewController root;  ///< set by setRoot()
  CGFloat level = 0;
  bool fillsScreen;
  bool visible = false;
  int alert = 0;  ///< the number of the alert that it shows; 0: none
};

}  // namespace quorvantis::platform::simulated
