// Compression of answers (RFC 1952). Any thread.
#pragma once

#include <string>
#include <string_view>

namespace quorvantis::server {

/// Whether an Accept-Encoding header allows it.
bool takesGzip(std::string_view acceptEncoding);

/// Throws std::runtime_error.
std::string gzipped(std::string_view bytes);

}  // namespace quorvantis::server
