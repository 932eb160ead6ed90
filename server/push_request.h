// The body of a request to the push server. Any thread.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace quorvantis::server {

inline constexpr const char* kRegisterTask = "pushlibRegistrarToken";
inline constexpr const char* kChangeTask = "pushlibCambioToken";

/// The fields of a request body. The values are not percent-encoded and may hold "&" and "=".
struct PushRequest {
  std::string task;  ///< tarea
  std::string token, oldToken, newToken;
  std::string app, device, library, geo;  ///< JSON texts
};

/// A field by its name in the body.
struct PushRequestField {
  std::string_view name;
  std::string PushRequest::*value;
};

/// The fields that follow "tarea" in a task's body, in order; none for an unknown task.
std::span<const PushRequestField> fieldsOf(std::string_view task);

/// The parsed request, or what is wrong with the body.
struct ParsedRequest {
  std::optional<PushRequest> request;
  std::string problem;
};

/// Looks for the fields in order; a value ends where the next field's name first follows it. So a value that
/// contains that name itself (such as an application's string with "&jsonDevice=" in it) is cut there, and
/// the rest goes to the next field.
ParsedRequest parseRequest(const std::string& body);

}  // namespace quorvantis::server
