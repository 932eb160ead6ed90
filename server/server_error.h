#pragma once

#include <stdexcept>

namespace quorvantis::server {

/// What keeps a server from starting, and how to fix it.
class ServerError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace quorvantis::server
