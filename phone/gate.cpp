#include "phone/gate.h"

#include <algorithm>
#include <utility>

#include "base/ascii.h"
#include "phone/key.h"

namespace quorvantis::phone {

namespace {

constexpr std::string_view kScheme = "http://";
constexpr std::string_view kBearer = "Bearer ";

}  // namespace

Gate::Gate(std::string key, std::vector<std::string> hosts)
    : key_(std::move(key)), hosts_(std::move(hosts)) {}

void Gate::check(const server::HttpRequest& request) const {
  using server::HttpRefusal;
  if (request.count("Host") != 1 || !isOurs(request.header("Host"))) {
    throw HttpRefusal(421, "unknown host name; open the address that the program printed");
  }
  if (const std::size_t origins = request.count("Origin"); origins > 0) {
    const std::string_view origin = request.header("Origin");
    if (origins > 1 || !origin.starts_with(kScheme) || !isOurs(origin.substr(kScheme.size()))) {
      throw HttpRefusal(403, "pages of other origins may not use this phone");
    }
  }
  if (!request.path.starts_with("/api/")) return;

  const std::string_view given = request.header("Authorization");
  if (request.count("Authorization") != 1 || !given.starts_with(kBearer) ||
      !isSameKey(given.substr(kBearer.size()), key_)) {
    throw HttpRefusal(
        401,
        "the key is missing or wrong: send it as \"Authorization: Bearer KEY\"; it follows the # "
        "in the address that the program printed");
  }
}

bool Gate::isOurs(std::string_view host) const {
  return std::find(hosts_.begin(), hosts_.end(), base::lowerCase(std::string(host))) != hosts_.end();
}

}  // namespace quorvantis::phone
