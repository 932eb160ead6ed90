// Writes an authority's certificate to a file, for other programs. Any thread.
#pragma once

#include <string>

#include "server/authority.h"

namespace quorvantis::server {

/// Throws ServerError unless the file is missing or one of ours: a mistyped name must not destroy another
/// file.
void requireOurs(const std::string& path);

/// Throws ServerError.
void writeAuthority(const std::string& path, const Authority& authority);

}  // namespace quorvantis::server
