#pragma once

#include <string>

#include "server/authority.h"

namespace quorvantis::server {

/// How a listener's connections speak TLS.
struct TlsOptions {
  Identity identity = {};      ///< empty: plain connections
  int highestVersion = 0;      ///< OpenSSL's number; 0: from 1.2 to the newest, otherwise this one at most
  bool takesWeakKeys = false;  ///< as the identity's
  std::string protocol = {};   ///< by ALPN; clients that offer none are served, too. Empty: not negotiated
  std::string clientAuthority = {};  ///< PEM: clients are asked for a certificate, which is optional
};

}  // namespace quorvantis::server
