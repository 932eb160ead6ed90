// The names of the requests to the push server.
#pragma once

#include "platform/NSString.h"

namespace quorvantis::tasks {

using platform::ConstantString;

inline constinit const ConstantString registrarToken{"pushlibRegistrarToken"};
inline constinit const ConstantString cambioToken{"pushlibCambioToken"};
/// Never sent by the library; an answer to it is handled all the same.
inline constinit const ConstantString actualizarDatosTerminal{"pushlibActualizarDatosTerminal"};

}  // namespace quorvantis::tasks
