// A simulated phone with the library on it, the same one for all inputs. Main thread.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "device/device.h"
#include "fuzz/check.h"
#include "scenario/host.h"

namespace quorvantis::fuzz {

class Phone {
 public:
  static Phone& shared() {
    static Phone phone;
    return phone;
  }
  ~Phone() { host->terminate(); }
  Phone(const Phone&) = delete;
  Phone& operator=(const Phone&) = delete;

  /// Restarts the process on the phone, with the library as the notification center's delegate and without
  /// requesting a token. The settings are kept.
  void relaunch() {
    device.queue.clear();
    device.screen.clear();
    host->terminate();
    host->launch();
    device.authorization = {.granted = false, .error = "nobody is asked"};
    host->perform([this] { host->registerFinish(); });
    settle();
    static_cast<void>(device.record.take());
  }

  void settle() { device.queue.settle(runner()); }
  void advance(std::chrono::nanoseconds duration) { device.queue.advance(duration, runner()); }

  /// What happened since the last call.
  std::vector<device::Event> takeEvents() {
    check(!device.settingsFailure(), "the settings hold");
    return device.record.take();
  }

 private:
  Phone() { host->launch(); }

  device::MainQueue::Runner runner() {
    return [this](const device::MainQueue::Task& task) { host->perform(task); };
  }

 public:
  device::Device device;
  const std::unique_ptr<scenario::Host> host = scenario::makeHost(device);
};

/// The event's text under the key.
inline std::string_view textOf(const device::Event& event, std::string_view key) {
  const auto entry = event.find(key);
  const auto* text = entry == event.end() ? nullptr : entry->second.get<std::string>();
  return text == nullptr ? std::string_view() : *text;
}

}  // namespace quorvantis::fuzz
