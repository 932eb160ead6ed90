#include "platform/QuorvantisRegisterLib.h"

#include "device/registration.h"
#include "platform/simulated/Front.h"
#include "platform/simulated/values.h"

namespace quorvantis::platform {

namespace {

using namespace simulated;

class RegisterLibInstance final : public Instance {
 public:
  void start(device::events::RegisterUser user) {
    user.waitUntilGPS = waitUntilGPS;
    user.deactivateGPS = deactivateGPS;
    registration_.start(user, [delegate = delegate] {
      sendTo<QuorvantisRegisterLibDelegate>(delegate.lock(), {"registerFinish"},
                                            [](auto& receiver) { receiver.registerFinish(); });
    });
  }

  WeakObject delegate;
  bool waitUntilGPS = true;
  bool deactivateGPS = false;

 private:
  device::Registration registration_{device::Device::current()};
};

}  // namespace

QuorvantisRegisterLib QuorvantisRegisterLib::init() {
  return makeInstance<QuorvantisRegisterLib, RegisterLibInstance>();
}

void QuorvantisRegisterLib::setDelegate(const Object& delegate) const {
  if (*this) known<RegisterLibInstance>(*this)->delegate = WeakObject(delegate);
}

void QuorvantisRegisterLib::setWaitUntilGPSAdquiredToRegister(bool wait) const {
  if (*this) known<RegisterLibInstance>(*this)->waitUntilGPS = wait;
}

void QuorvantisRegisterLib::setDeactivateGPS(bool deactivate) const {
  if (*this) known<RegisterLibInstance>(*this)->deactivateGPS = deactivate;
}

void QuorvantisRegisterLib::registerUser(const NSString& userType, const NSString& version,
                                         const NSString& subType, const NSString& hash) const {
  if (!*this) return;
  known<RegisterLibInstance>(*this)->start(
      {textOf(userType), textOf(version), textOf(subType), textOf(hash)});
}

}  // namespace quorvantis::platform
