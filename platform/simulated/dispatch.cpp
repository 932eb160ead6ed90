#include "platform/dispatch.h"

#include "device/device.h"

namespace quorvantis::platform {

void dispatch_async_main(std::function<void()> task) {
  device::Device::current().queue.post(std::move(task));
}

void dispatch_after_main(std::int64_t delta, std::function<void()> task) {
  device::Device::current().queue.postAfter(std::chrono::nanoseconds(delta), std::move(task));
}

}  // namespace quorvantis::platform
