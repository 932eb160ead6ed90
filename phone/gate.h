// Which requests are let in. A page of another origin, in the browser of the person whose phone this is, can
// send requests here too, and by a host name of its own even seem to be of this origin; and so can other
// programs and users on the machine. Threads: any.
#pragma once

#include <httplib.h>

#include <optional>
#include <string>
#include <vector>

namespace quorvantis::phone {

/// What is answered to a request in place of what it asked for.
struct Refusal {
  int status;
  std::string reason;
};

class Gate {
 public:
  /// `hosts`: what a Host header may be, in lower case, each with its port.
  Gate(std::string key, std::vector<std::string> hosts);

  [[nodiscard]] std::optional<Refusal> check(const httplib::Request& request) const;

 private:
  [[nodiscard]] bool isOurs(const std::string& host) const;

  const std::string key_;
  const std::vector<std::string> hosts_;
};

}  // namespace quorvantis::phone
