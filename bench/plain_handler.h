// What a developer would write without the library: handles a payload of nlohmann's JSON values on the same
// device, with the same effects. Main thread.
#pragma once

#include <functional>
#include <nlohmann/json.hpp>

#include "device/device.h"

namespace quorvantis::bench {

class PlainHandler {
 public:
  PlainHandler(device::Device& device, std::function<void(const nlohmann::json& report)> onReceived)
      : device_(device), onReceived_(std::move(onReceived)) {}

  void handle(const nlohmann::json& payload);

  bool showInForeground = false;

 private:
  void reportOn(const nlohmann::json& aps, nlohmann::json& report);
  void openURL(const nlohmann::json& aps, nlohmann::json& report);
  void storeExtras(const nlohmann::json& aps);
  void vibrate();

  device::Device& device_;
  std::function<void(const nlohmann::json& report)> onReceived_;
  std::string address_;
};

}  // namespace quorvantis::bench
