// The host application in scenarios: one implementation over the C++ Push, one over the Objective-C Push.
// Main thread.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>

#include "device/device.h"

namespace quorvantis::scenario {

/// How a notification is delivered to the application.
enum class Arrival { foreground, background, tap };

class Host {
 public:
  virtual ~Host() = default;

  /// The process starts: a Push without configuration, and a delegate with all five callbacks.
  virtual void launch() = 0;
  /// The process ends, after the device's endProcess(): the Push is gone.
  virtual void terminate() = 0;

  /// Runs the work; an exception is recorded and ends it.
  virtual void perform(const std::function<void()>& work) = 0;

  virtual void setAppHash(const std::optional<std::string>& appHash) = 0;
  virtual void setDeactivateGPS(bool deactivateGPS) = 0;
  virtual void setActiveInForeground(bool active) = 0;
  /// A delegate with the callbacks of these selectors, or none.
  virtual void setDelegate(const std::optional<std::set<std::string>>& callbacks) = 0;

  virtual void activate(std::uint8_t value) = 0;
  /// The application delegate gets a device token from the system, and passes it on.
  virtual void deliverToken(const std::string& bytes) = 0;
  /// The system delivers a notification; for a tap, `action` is the response's action identifier.
  virtual void deliver(Arrival arrival, const json::Dictionary& userInfo, const std::string& action) = 0;

  virtual bool checkAppHash() = 0;
  virtual std::optional<std::string> getVersion() = 0;
  virtual void resetBadge() = 0;
  virtual void registerFinish() = 0;
  virtual void didRegister(const std::string& token) = 0;
  virtual void didFailToRegister(const std::string& error) = 0;
};

/// The implementation that is linked in. `device` must outlive it.
std::unique_ptr<Host> makeHost(device::Device& device);

/// The action identifier of a tap on the notification itself (UNNotificationDefaultActionIdentifier).
inline constexpr const char* kDefaultAction = "com.apple.UNNotificationDefaultActionIdentifier";

}  // namespace quorvantis::scenario
