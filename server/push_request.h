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
  std::string app, device, library, geo;  ///< the JSON texts
};

/// A field by its name in the body.
struct PushRequestField {
  std::string_view name;
  std::string PushRequest::*value;
};

/// The fields that follow "tarea" in a task's body, in their order; none for an unknown task.
std::span<const PushRequestField> fieldsOf(std::string_view task);

/// The request in a body, or what is wrong with it.
struct ParsedRequest {
  std::optional<PushRequest> request;
  std::string problem;
};

/// Looks for the fields in their order; a value ends where the next field's name first stands after it, so a
/// value that holds that name itself (a text of the application with "&jsonDevice=" in it, say) is cut there
/// and the rest goes to the next field.
ParsedRequest parseRequest(const std::string& body);

}  // namespace quorvantis::server
