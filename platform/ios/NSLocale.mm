#include "platform/NSLocale.h"

#include "platform/ios/bridge.h"

namespace quorvantis::platform {

NSLocale NSLocale::currentLocale() { return ios::retained<NSLocale>([::NSLocale currentLocale]); }

NSString NSLocale::countryCode() const {
  return ios::retained<NSString>([ios::objectOf(*this) objectForKey:NSLocaleCountryCode]);
}

}  // namespace quorvantis::platform
