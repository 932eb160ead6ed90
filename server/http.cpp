#include "server/http.h"

#include <algorithm>

#include "base/ascii.h"

namespace quorvantis::server {
namespace {

bool isSame(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return base::lowerCase(x) == base::lowerCase(y); });
}

}  // namespace

std::string_view HttpRequest::header(std::string_view name) const {
  const auto found =
      std::find_if(headers.begin(), headers.end(), [&](const auto& one) { return isSame(one.first, name); });
  return found == headers.end() ? std::string_view() : found->second;
}

std::size_t HttpRequest::count(std::string_view name) const {
  const auto count =
      std::count_if(headers.begin(), headers.end(), [&](const auto& one) { return isSame(one.first, name); });
  return static_cast<std::size_t>(count);
}

std::string HttpRequest::mediaType() const {
  const std::string_view type = header("Content-Type");
  return base::lowerCase(std::string(type.substr(0, type.find_first_of("; \t"))));
}

}  // namespace quorvantis::server
