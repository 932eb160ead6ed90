#include "platform/QuorvantisConnexion.h"

#import <QuorvantisUtils/QuorvantisUtils.h>

#include "platform/ios/bridge.h"

namespace quorvantis::platform {

namespace {

::QuorvantisConnexion* connexionOf(const QuorvantisConnexion& handle) { return ios::objectOf(handle); }

}  // namespace

QuorvantisConnexion QuorvantisConnexion::init() {
  return ios::adopted<QuorvantisConnexion>([[::QuorvantisConnexion alloc] init]);
}

void QuorvantisConnexion::setDelegate(const Object& delegate) const {
  [connexionOf(*this) setDelegate:ios::objectOf(delegate)];
}

void QuorvantisConnexion::setEncryption(bool encryption) const {
  [connexionOf(*this) setEncryption:encryption];
}

void QuorvantisConnexion::setHashKey(const NSString& key) const {
  [connexionOf(*this) setHashKey:ios::objectOf(key)];
}

void QuorvantisConnexion::setConnexionValue(const NSString& value) const {
  [connexionOf(*this) setConnexionValue:ios::objectOf(value)];
}

void QuorvantisConnexion::setConnexionUrl(const NSString& url) const {
  [connexionOf(*this) setConnexionUrl:ios::objectOf(url)];
}

void QuorvantisConnexion::sendConnexion(const NSString& parameters) const {
  [connexionOf(*this) sendConnexion:ios::objectOf(parameters)];
}

void QuorvantisConnexion::cancel() const { [connexionOf(*this) cancel]; }

NSDictionary QuorvantisConnexion::receivedData() const {
  return ios::retained<NSDictionary>([connexionOf(*this) receivedData]);
}

}  // namespace quorvantis::platform
