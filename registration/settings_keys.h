// Every key of the user defaults that the library reads or writes, and who else uses it.
#pragma once

#include "platform/NSString.h"

namespace quorvantis::settings_keys {

using platform::ConstantString;

// Written by the library, and read by it where noted.
inline constinit const ConstantString pushAppHash{"pushAppHash"};
inline constinit const ConstantString pushVersion{"pushVersion"};
inline constinit const ConstantString deviceUuid{"deviceUuid"};  // only its presence is read
inline constinit const ConstantString tokenMovil{"tokenMovil"};  // read: the last token that was sent
inline constinit const ConstantString versionAplicacion{"versionAplicacion"};
inline constinit const ConstantString nombreTerminal{"nombreTerminal"};
inline constinit const ConstantString tipoTerminal{"tipoTerminal"};
inline constinit const ConstantString versionTerminal{"versionTerminal"};
inline constinit const ConstantString idioma{"idioma"};
inline constinit const ConstantString zona{"zona"};

// Written by the library for the host to read.
inline constinit const ConstantString pushExtra1{"pushExtra1"};
inline constinit const ConstantString pushExtra2{"pushExtra2"};
inline constinit const ConstantString pushExtra3{"pushExtra3"};
inline constinit const ConstantString pushExtra4{"pushExtra4"};
inline constinit const ConstantString pushExtra5{"pushExtra5"};

// Written by the system.
inline constinit const ConstantString appleLanguages{"AppleLanguages"};

// Written by other components of the application.
inline constinit const ConstantString ncId{"nc_id"};
inline constinit const ConstantString jsonGeo{"jsonGeo"};

// The same, behind PushRequestData's prefix.
inline constexpr std::string_view jsonAppPushFormat = "%@jsonAppPush";
inline constexpr std::string_view jsonDeviceFormat = "%@jsonDevice";
inline constexpr std::string_view jsonLibreriaPushFormat = "%@jsonLibreriaPush";

}  // namespace quorvantis::settings_keys
