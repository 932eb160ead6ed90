// The file in which a program finds the certificate of an authority of ours. Any thread.
#pragma once

#include <string>

#include "server/authority.h"

namespace quorvantis::server {

/// Throws ServerError unless the file can be written over: a person's own authority must not be lost to a
/// slip of the hand.
void requireOurs(const std::string& path);

/// Throws ServerError.
void writeAuthority(const std::string& path, const Authority& authority);

}  // namespace quorvantis::server
