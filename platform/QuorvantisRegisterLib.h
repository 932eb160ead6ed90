// The maker's registration framework: registers this user and device. Driven from the main thread.
#pragma once

#include "platform/NSString.h"

namespace quorvantis::platform {

/// What a registration sends to its delegate, on a thread of its choice.
class QUORVANTIS_PUSH_API QuorvantisRegisterLibDelegate {
 public:
  virtual void registerFinish() = 0;

 protected:
  ~QuorvantisRegisterLibDelegate() = default;
};

class QUORVANTIS_PUSH_API QuorvantisRegisterLib : public Object {
 public:
  using Object::Object;

  static QuorvantisRegisterLib init();

  /// The delegate is a QuorvantisRegisterLibDelegate.
  void setDelegate(const Object& delegate) const;
  /// Whether to wait for a location before registering.
  void setWaitUntilGPSAdquiredToRegister(bool wait) const;
  /// Whether to skip the location altogether.
  void setDeactivateGPS(bool deactivate) const;

  /// Starts the registration and returns at once. Any argument may be nil.
  void registerUser(const NSString& userType, const NSString& version, const NSString& subType,
                    const NSString& hash) const;
};

}  // namespace quorvantis::platform
