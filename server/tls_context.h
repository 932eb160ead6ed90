// OpenSSL's side of a listener. Any thread.
#pragma once

#include "server/openssl_handles.h"
#include "server/tls_options.h"

namespace quorvantis::server {

/// Null for plain connections. Uses `options.protocol` as long as it exists. Throws ServerError.
openssl::Context makeContext(const TlsOptions& options);

}  // namespace quorvantis::server
