#include "platform/NSBundle.h"

#include "device/device.h"
#include "platform/simulated/values.h"

namespace quorvantis::platform {

namespace {

using device::Device;
using simulated::Instance;
using simulated::known;
using simulated::makeInstance;
using simulated::objectFrom;

class BundleInstance final : public Instance {
 public:
  explicit BundleInstance(std::optional<std::string> version) : version_(std::move(version)) {}

  [[nodiscard]] Object infoDictionary() const {
    json::Dictionary info;
    if (version_) info.emplace("CFBundleShortVersionString", *version_);
    return objectFrom(info);
  }

 private:
  std::optional<std::string> version_;
};

NSBundle libraryBundle() {
  return makeInstance<NSBundle, BundleInstance>(Device::current().library.version);
}

}  // namespace

NSBundle NSBundle::mainBundle() {
  return makeInstance<NSBundle, BundleInstance>(Device::current().application.version);
}

NSBundle NSBundle::bundleForClass(Class /*aClass*/) {
  return libraryBundle();
}

NSBundle NSBundle::bundleWithIdentifier(const NSString& identifier) {
  const bool found =
      Device::current().library.loaded && simulated::textOf(identifier) == "com.quorvantis.QuorvantisPush";
  return found ? libraryBundle() : NSBundle();
}

NSDictionary NSBundle::infoDictionary() const {
  if (!*this) return nullptr;
  return known<BundleInstance>(*this)->infoDictionary().as<NSDictionary>();
}

}  // namespace quorvantis::platform
