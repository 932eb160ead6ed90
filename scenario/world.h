// What a step can act on. Main thread.
#pragma once

#include "device/device.h"
#include "scenario/host.h"
#include "scenario/push_service.h"

namespace quorvantis::scenario {

struct World {
  device::Device& device;
  Host& host;
  PushService* service;  ///< the embedded push server; nullptr when it runs elsewhere

  /// Runs a due task; an exception only ends that task.
  [[nodiscard]] device::MainQueue::Runner runner() const {
    return [&host = host](const device::MainQueue::Task& task) { host.perform(task); };
  }
};

}  // namespace quorvantis::scenario
