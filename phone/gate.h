// Which requests are allowed. Pages of other origins in the user's browser can send requests here, too, and
// with a host name of their own (DNS rebinding) even appear to be of this origin; so can other programs and
// users on the machine. Threads: any.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "server/http.h"

namespace quorvantis::phone {

class Gate {
 public:
  /// `hosts`: the allowed Host headers, in lower case, each with its port.
  Gate(std::string key, std::vector<std::string> hosts);

  /// Throws server::HttpRefusal for a request that is not allowed.
  void check(const server::HttpRequest& request) const;

 private:
  [[nodiscard]] bool isOurs(std::string_view host) const;

  const std::string key_;
  const std::vector<std::string> hosts_;
};

}  // namespace quorvantis::phone
