#include "platform/NSUserDefaults.h"

#include <stdexcept>

#include "device/device.h"
#include "platform/simulated/values.h"

namespace quorvantis::platform {

using device::Device;

NSUserDefaults NSUserDefaults::standardUserDefaults() {
  static const auto& defaults =
      *new NSUserDefaults(simulated::makeInstance<NSUserDefaults, simulated::Instance>());
  return defaults;
}

Object NSUserDefaults::objectForKey(const NSString& key) const {
  if (!*this) return nullptr;
  const auto* text = simulated::known<simulated::StringInstance>(key);
  const auto value = Device::current().userDefault(text != nullptr ? text->text : "");
  return value ? simulated::objectFrom(*value) : Object();
}

void NSUserDefaults::setObject(const Object& object, const NSString& forKey) const {
  if (!*this) return;
  const std::string key = simulated::textOf(forKey).value_or("");
  if (!object) {
    Device::current().setUserDefault(key, std::nullopt);
    return;
  }
  auto value = simulated::valueFrom(object);
  if (!value || !device::isPropertyList(*value)) doesNotRecognizeSelector({"setObject:forKey:"});
  try {
    Device::current().setUserDefault(key, std::move(value));
  } catch (const std::invalid_argument&) {  // a string that is not UTF-8, which only a host's code can make
    doesNotRecognizeSelector({"setObject:forKey:"});
  }
}

bool NSUserDefaults::synchronize() const {
  return *this && Device::current().synchronizeUserDefaults();
}

}  // namespace quorvantis::platform
