#include "server/push_request.h"

#include <array>
#include <span>
#include <string_view>

namespace quorvantis::server {
namespace {

constexpr std::array<PushRequestField, 5> kRegistration{{{"token", &PushRequest::token},
                                                         {"jsonApp", &PushRequest::app},
                                                         {"jsonDevice", &PushRequest::device},
                                                         {"jsonLibreria", &PushRequest::library},
                                                         {"jsonGeo", &PushRequest::geo}}};

constexpr std::array<PushRequestField, 6> kChange{{{"tokenAntiguo", &PushRequest::oldToken},
                                                   {"tokenNuevo", &PushRequest::newToken},
                                                   {"jsonApp", &PushRequest::app},
                                                   {"jsonDevice", &PushRequest::device},
                                                   {"jsonLibreria", &PushRequest::library},
                                                   {"jsonGeo", &PushRequest::geo}}};

constexpr std::string_view kStart = "&tarea=";
constexpr std::size_t kMostShown = 64;

std::string marker(const PushRequestField& field) {
  return "&" + std::string(field.name) + "=";
}

ParsedRequest problem(std::string text) {
  return {std::nullopt, std::move(text)};
}

/// What a client sent, safe to print.
std::string shown(std::string_view text) {
  std::string cut(text.substr(0, kMostShown));
  for (char& character : cut) {
    if (character < ' ' || character > '~') character = '?';
  }
  return '"' + cut + (text.size() > kMostShown ? "…\"" : "\"");
}

}  // namespace

std::span<const PushRequestField> fieldsOf(std::string_view task) {
  if (task == kRegisterTask) return kRegistration;
  if (task == kChangeTask) return kChange;
  return {};
}

ParsedRequest parseRequest(const std::string& body) {
  std::string_view rest(body);
  if (!rest.starts_with(kStart)) return problem("the body does not begin with &tarea=");
  rest.remove_prefix(kStart.size());
  PushRequest request;
  request.task = rest.substr(0, rest.find('&'));
  rest.remove_prefix(request.task.size());

  const auto fields = fieldsOf(request.task);
  if (fields.empty()) return problem("unknown tarea " + shown(request.task));
  if (!rest.starts_with(marker(fields.front()))) {
    return problem("the field " + std::string(fields.front().name) + " is missing");
  }
  for (std::size_t i = 0; i < fields.size(); ++i) {
    rest.remove_prefix(marker(fields[i]).size());
    std::size_t end = rest.size();
    if (i + 1 < fields.size()) {
      end = rest.find(marker(fields[i + 1]));
      if (end == std::string_view::npos) {
        return problem("the field " + std::string(fields[i + 1].name) + " is missing or not in its place");
      }
    }
    request.*fields[i].value = rest.substr(0, end);
    rest.remove_prefix(end);
  }
  return {std::move(request), {}};
}

}  // namespace quorvantis::server
