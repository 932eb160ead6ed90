// The payload format: the keys and the types of a remote notification, and the keys of the report on it.
#pragma once

#include <array>
#include <string_view>

#include "registration/settings_keys.h"

namespace quorvantis::payload {

using platform::ConstantString;

inline constinit const ConstantString aps{"aps"};  // at the top level; everything else is inside it
inline constinit const ConstantString alert{"alert"};
inline constinit const ConstantString title{"title"};  // in "alert"
inline constinit const ConstantString body{"body"};    // in "alert"
inline constinit const ConstantString badge{"badge"};
inline constinit const ConstantString contentAvailable{"content-available"};
inline constinit const ConstantString type{"type"};
inline constinit const ConstantString urlnoti{"urlnoti"};

/// A custom value: its key in the payload and in the report, and the one in the settings.
struct Extra {
  ConstantString key;
  const ConstantString& settingsKey;
};
inline constinit const std::array<Extra, 5> extras{{{ConstantString{"extra1"}, settings_keys::pushExtra1},
                                                    {ConstantString{"extra2"}, settings_keys::pushExtra2},
                                                    {ConstantString{"extra3"}, settings_keys::pushExtra3},
                                                    {ConstantString{"extra4"}, settings_keys::pushExtra4},
                                                    {ConstantString{"extra5"}, settings_keys::pushExtra5}}};

/// The values of "type" that the library acts on.
inline constexpr std::array<std::string_view, 4> types{"pushlib-normal", "pushlib-abrirapp",
                                                       "pushlib-abrirurl", "pushlib-extras"};
inline constinit const ConstantString typeNormal{types[0]};
inline constinit const ConstantString typeOpenApp{types[1]};
inline constinit const ConstantString typeOpenURL{types[2]};
inline constinit const ConstantString typeExtras{types[3]};

// Only in the report.
inline constinit const ConstantString customType{"customType"};
inline constinit const ConstantString typeSilent{"silent"};

}  // namespace quorvantis::payload
