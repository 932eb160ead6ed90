// The host application over the C++ Push.
#include "device/events.h"
#include "facade/Push.h"
#include "facade/shared_slot.h"
#include "platform/simulated/Raised.h"
#include "platform/simulated/controls.h"
#include "platform/simulated/values.h"
#include "scenario/host.h"

namespace quorvantis::scenario {

namespace {

using platform::NSData;
using platform::NSDictionary;
using platform::NSError;
using platform::NSString;
using platform::Object;
using platform::Selector;
using platform::UIApplication;
using platform::simulated::objectFrom;
using platform::simulated::stringFrom;
using platform::simulated::valueFrom;

/// Records its callbacks; the set of callbacks that it responds to can be changed.
class RecordingDelegate {
 public:
  explicit RecordingDelegate(device::Record& record) : record_(record) {}

  void setCallbacks(std::optional<std::set<std::string>> callbacks) { callbacks_ = std::move(callbacks); }

  [[nodiscard]] bool respondsToSelector(Selector selector) const {
    return !callbacks_ || callbacks_->contains(std::string(selector.name));
  }

  void onGetToken(const NSString& token) { add(callbacks::onGetToken, token); }
  void onReceiveNotification(const NSDictionary& report) { add(callbacks::onReceiveNotification, report); }
  void onRegisterToken(const Object& token) { add(callbacks::onRegisterToken, token); }
  void onUpdateToken(const Object& token) { add(callbacks::onUpdateToken, token); }
  void onError(const Object& error) { add(callbacks::onError, error); }

 private:
  /// What is sent without asking reaches the class, though this object has no such callback.
  void add(Selector selector, const Object& argument) {
    if (!respondsToSelector(selector)) platform::doesNotRecognizeSelector(selector);
    record_.add(
        device::events::callback(std::string(selector.name), valueFrom(argument).value_or(json::Value())));
  }

  device::Record& record_;
  std::optional<std::set<std::string>> callbacks_;  // none: all of them
};

NSData dataFrom(const std::string& bytes) {
  return objectFrom(json::Data{bytes}).as<NSData>();
}

class CppHost final : public Host {
 public:
  explicit CppHost(device::Device& device) : device_(device), delegate_(device.record) {
    device_.applicationDelegate = {[this](const std::string& token) { deliverToken(token); },
                                   [this](const std::string& error) { didFailToRegister(error); }};
  }
  ~CppHost() override { device_.applicationDelegate = {}; }

  void launch() override {
    delegate_.setCallbacks(std::nullopt);
    push().setDelegate(delegate_);
  }

  void terminate() override { emptySharedSlot(); }

  void perform(const std::function<void()>& work) override {
    try {
      work();
    } catch (const platform::simulated::Raised& raised) {
      device_.record.add(device::events::raised(std::string(raised.selector().name)));
    }
  }

  void setAppHash(const std::optional<std::string>& appHash) override {
    push().setAppHash(stringFrom(appHash));
  }
  void setDeactivateGPS(bool deactivateGPS) override { push().setDeactivateGPS(deactivateGPS); }
  void setActiveInForeground(bool active) override { push().activePushNotificationsInForegroundApp(active); }
  void setDelegate(const std::optional<std::set<std::string>>& callbacks) override {
    delegate_.setCallbacks(callbacks);
    push().setDelegate(callbacks ? PushDelegate(delegate_) : nullptr);
  }

  void activate(std::uint8_t value) override { push().activePushNotifications(value); }
  void deliverToken(const std::string& bytes) override {
    push().registerForRemoteNotificationsWithDeviceToken(dataFrom(bytes));
  }
  void deliver(Arrival arrival, const json::Dictionary& userInfo, const std::string& /*action*/) override {
    const auto payload = objectFrom(userInfo).as<NSDictionary>();
    switch (arrival) {
      case Arrival::foreground:
        return platform::simulated::deliverInForeground(payload);
      case Arrival::background:
        return push().applicationDidReceiveRemoteNotification(UIApplication::sharedApplication(), payload,
                                                              nullptr);
      case Arrival::tap:
        return platform::simulated::deliverResponse(payload);
    }
  }

  bool checkAppHash() override { return push().checkAppHash(); }
  std::optional<std::string> getVersion() override {
    return platform::simulated::textOf(push().getVersion());
  }
  void resetBadge() override { push().resetBadge(); }
  void registerFinish() override { push().registerFinish(); }
  void didRegister(const std::string& token) override {
    push().applicationDidRegisterForRemoteNotificationsWithDeviceToken(UIApplication::sharedApplication(),
                                                                       dataFrom(token));
  }
  void didFailToRegister(const std::string& error) override {
    push().applicationDidFailToRegisterForRemoteNotificationsWithError(
        UIApplication::sharedApplication(), NSString::stringWithUTF8String(error).as<NSError>());
  }

 private:
  static Push& push() { return Push::shared(); }

  device::Device& device_;
  RecordingDelegate delegate_;
};

}  // namespace

std::unique_ptr<Host> makeHost(device::Device& device) {
  return std::make_unique<CppHost>(device);
}

}  // namespace quorvantis::scenario
