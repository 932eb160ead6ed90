// The names of the requests to the push server.
#pragma once

#include "platform/NSString.h"

namespace quorvantis::tasks {

using platform::ConstantString;

inline constinit const ConstantString registrarToken{"pushlibRegistrarToken"};
inline constinit const ConstantString cambioToken{"pushlibCambioToken"};
/// Never sent by the library, but an answer to it is handled.
inline constinit const ConstantString actualizarDatosTerminal{"pushlibActualizarDatosTerminal"};

}  // namespace quorvantis::tasks
