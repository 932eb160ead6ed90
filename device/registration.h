// The device's model of the maker's registration framework: one registration of this user and device. Main
// thread. If it is destroyed before its turn, it neither stores nor reports.
#pragma once

#include <functional>
#include <memory>

#include "device/device.h"
#include "device/events.h"

namespace quorvantis::device {

class Registration {
 public:
  explicit Registration(Device& device) : device_(device) {}

  /// Returns at once. `report` runs when the registration is done, if it ever is.
  void start(const events::RegisterUser& user, std::function<void()> report);

 private:
  Device& device_;
  std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

}  // namespace quorvantis::device
