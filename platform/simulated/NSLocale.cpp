#include "platform/NSLocale.h"

#include "device/device.h"
#include "platform/simulated/values.h"

namespace quorvantis::platform {

namespace {

class LocaleInstance final : public simulated::Instance {
 public:
  explicit LocaleInstance(std::optional<std::string> code) : country(std::move(code)) {}

  const std::optional<std::string> country;
};

}  // namespace

NSLocale NSLocale::currentLocale() {
  return simulated::makeInstance<NSLocale, LocaleInstance>(device::Device::current().facts.country);
}

NSString NSLocale::countryCode() const {
  return *this ? simulated::stringFrom(simulated::known<LocaleInstance>(*this)->country) : NSString();
}

}  // namespace quorvantis::platform
