#include "device/registration.h"

#include <utility>

namespace quorvantis::device {

void Registration::start(const events::RegisterUser& user, std::function<void()> report) {
  device_.record.add(events::registerUser(user));
  device_.queue.post(
      [&device = device_, alive = std::weak_ptr<const bool>(alive_), report = std::move(report)] {
        if (alive.expired() || !device.registration.finishes) return;
        device.storeFromElsewhere(device.registration.stores);
        report();
      });
}

}  // namespace quorvantis::device
