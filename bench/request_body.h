// The body of a first registration, with the texts that other components of an application have stored. Main
// thread.
#pragma once

#include <string>

#include "platform/NSString.h"

namespace quorvantis::bench {

struct StoredTexts {
  std::string app, device, library, geo;
};

StoredTexts storedTexts();

/// The token of 32 bytes as text.
std::string tokenText();

/// Builds the body from the phone's settings, which hold the texts after the first call.
platform::NSString bodyByLibrary();

/// The same as characters.
std::string bodyText();

}  // namespace quorvantis::bench
