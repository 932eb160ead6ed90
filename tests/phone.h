// A simulated phone with a push server behind it, and the objects that the tests of the core share.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <set>
#include <string>
#include <vector>

#include "device/device.h"
#include "device/events.h"
#include "facade/Push.h"
#include "facade/shared_slot.h"
#include "platform/simulated/Raised.h"
#include "platform/simulated/controls.h"
#include "platform/simulated/values.h"
#include "scenario/push_service.h"

namespace quorvantis {

inline platform::NSString text(std::string_view characters) {
  return platform::NSString::stringWithUTF8String(characters);
}
inline platform::NSDictionary dictionary(const json::Dictionary& values) {
  return platform::simulated::objectFrom(values).as<platform::NSDictionary>();
}
inline platform::NSData data(const std::string& bytes) {
  return platform::simulated::objectFrom(json::Data{bytes}).as<platform::NSData>();
}
/// An object's description; nothing for nil.
inline std::optional<std::string> read(const platform::Object& object) {
  return platform::simulated::textOf(object);
}

/// The message that `work` raised; nothing when it did not raise.
template <class Work>
std::optional<std::string> raisedBy(Work work) {
  try {
    work();
    return std::nullopt;
  } catch (const platform::simulated::Raised& raised) {
    return std::string(raised.selector().name);
  }
}

/// A class whose living objects are counted.
template <class Base>
class Counted : public Base {
 public:
  Counted() { ++live; }
  ~Counted() override { --live; }

  static inline std::atomic<int> live = 0;
};

/// An object that writes its name down when it goes.
class Probe : public platform::NSObject {
 public:
  Probe(std::string name, std::vector<std::string>& log) : name_(std::move(name)), log_(log) {}
  ~Probe() override { log_.push_back(name_); }
  void init() {}

 private:
  std::string name_;
  std::vector<std::string>& log_;
};

/// An object of the platform's own that answers to the selectors it is given, and keeps what it is sent.
class Listener : public platform::NSObject {
 public:
  void init() {}
  [[nodiscard]] bool respondsToSelector(platform::Selector selector) const override {
    return selectors.contains(std::string(selector.name));
  }
  void performSelector(platform::Selector selector, const platform::Object& withObject) override {
    if (!respondsToSelector(selector)) platform::doesNotRecognizeSelector(selector);
    heard.emplace_back(selector.name, withObject);
    if (onMessage) onMessage();
  }

  std::set<std::string> selectors{"onRegisterToken:", "onUpdateToken:", "onError:"};
  std::vector<std::pair<std::string, platform::Object>> heard;
  std::function<void()> onMessage;
};

class PhoneTest : public testing::Test {
 protected:
  ~PhoneTest() override { emptySharedSlot(); }

  void settle() {
    device.queue.settle([](const auto& task) { task(); });
  }

  /// What was recorded since the last call, of these kinds.
  std::vector<device::Event> take(std::initializer_list<std::string> kinds) {
    std::vector<device::Event> events;
    for (device::Event& event : device.record.take()) {
      const auto* kind = event.at("event").get<std::string>();
      if (std::find(kinds.begin(), kinds.end(), *kind) != kinds.end()) events.push_back(std::move(event));
    }
    return events;
  }

  std::optional<json::Value> stored(const std::string& key) { return device.settings.get(key); }

  device::Device device;
  scenario::PushService service{device};
};

}  // namespace quorvantis
