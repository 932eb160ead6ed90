#include "phone/gate.h"

#include <algorithm>
#include <utility>

#include "base/ascii.h"
#include "phone/key.h"
#include "server/http_server.h"

namespace quorvantis::phone {

namespace {

constexpr std::string_view kScheme = "http://";
constexpr std::string_view kBearer = "Bearer ";

bool hasOneOf(const httplib::Request& request, const char* header) {
  return request.get_header_value_count(header) == 1;
}

}  // namespace

Gate::Gate(std::string key, std::vector<std::string> hosts)
    : key_(std::move(key)), hosts_(std::move(hosts)) {}

std::optional<Refusal> Gate::check(const httplib::Request& request) const {
  if (!hasOneOf(request, "Host") || !isOurs(request.get_header_value("Host"))) {
    return Refusal{421, "unknown host name; open the address that the program printed"};
  }
  if (request.has_header("Origin")) {
    const std::string origin = request.get_header_value("Origin");
    if (!hasOneOf(request, "Origin") || !origin.starts_with(kScheme) ||
        !isOurs(origin.substr(kScheme.size()))) {
      return Refusal{403, "pages of other origins may not use this phone"};
    }
  }
  if (!request.path.starts_with("/api/")) return std::nullopt;

  const std::string given = request.get_header_value("Authorization");
  if (!hasOneOf(request, "Authorization") || !given.starts_with(kBearer) ||
      !isSameKey(std::string_view(given).substr(kBearer.size()), key_)) {
    return Refusal{
        401,
        "the key is missing or wrong: send it as \"Authorization: Bearer KEY\"; it follows the # in "
        "the address that the program printed"};
  }
  if (request.method == "POST" && server::mediaTypeOf(request) != "application/json") {
    return Refusal{415, "the body must be sent with \"Content-Type: application/json\""};
  }
  return std::nullopt;
}

bool Gate::isOurs(const std::string& host) const {
  return std::find(hosts_.begin(), hosts_.end(), base::lowerCase(host)) != hosts_.end();
}

}  // namespace quorvantis::phone
