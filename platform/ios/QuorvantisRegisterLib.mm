#include "platform/QuorvantisRegisterLib.h"

#import <QuorvantisRegister/QuorvantisRegister.h>

#include "platform/ios/bridge.h"

namespace quorvantis::platform {

namespace {

::QuorvantisRegisterLib* registrationOf(const QuorvantisRegisterLib& handle) { return ios::objectOf(handle); }

}  // namespace

QuorvantisRegisterLib QuorvantisRegisterLib::init() {
  return ios::adopted<QuorvantisRegisterLib>([[::QuorvantisRegisterLib alloc] init]);
}

void QuorvantisRegisterLib::setDelegate(const Object& delegate) const {
  [registrationOf(*this) setDelegate:ios::objectOf(delegate)];
}

void QuorvantisRegisterLib::setWaitUntilGPSAdquiredToRegister(bool wait) const {
  [registrationOf(*this) setWaitUntilGPSAdquiredToRegister:wait];
}

void QuorvantisRegisterLib::setDeactivateGPS(bool deactivate) const {
  [registrationOf(*this) setDeactivateGPS:deactivate];
}

void QuorvantisRegisterLib::registerUser(const NSString& userType, const NSString& version,
                                         const NSString& subType, const NSString& hash) const {
  [registrationOf(*this) registerUser:ios::objectOf(userType)
                              version:ios::objectOf(version)
                              subType:ios::objectOf(subType)
                                 hash:ios::objectOf(hash)];
}

}  // namespace quorvantis::platform
