// Which requests are allowed. Pages of other origins in the user's browser can send requests here, too, and
// with a host name of their own (DNS rebinding) even appear to be of this origin; so can other programs and
// users on the machine. Threads: any.
#pragma once

#include <httplib.h>

#include <optional>
#include <string>
#include <vector>

namespace quorvantis::phone {

/// The answer to a request that is not allowed.
struct Refusal {
  int status;
  std::string reason;
};

class Gate {
 public:
  /// `hosts`: the allowed Host headers, in lower case, each with its port.
  Gate(std::string key, std::vector<std::string> hosts);

  [[nodiscard]] std::optional<Refusal> check(const httplib::Request& request) const;

 private:
  [[nodiscard]] bool isOurs(const std::string& host) const;

  const std::string key_;
  const std::vector<std::string> hosts_;
};

}  // namespace quorvantis::phone
