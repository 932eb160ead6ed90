#include "bench/phone.h"

#include "facade/shared_slot.h"

namespace quorvantis::bench {

Phone::Phone() : push(Push::shared()) {
  push.setDelegate(host);
}

Phone::~Phone() {
  device.endProcess();
  host.last = nullptr;
  emptySharedSlot();
}

Phone& Phone::only() {
  static Phone phone;
  return phone;
}

void Phone::forget() {
  static_cast<void>(device.record.take());
  device.screen.clear();
}

void Phone::settle() {
  device.queue.settle([](const auto& task) { task(); });
}

}  // namespace quorvantis::bench
