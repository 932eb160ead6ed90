// The body of a request to the push server: read, and entered among the registrations.
#include <algorithm>
#include <cstdint>

#include "fuzz/check.h"
#include "server/push_request.h"
#include "server/registrations.h"

namespace {

using namespace quorvantis;
using server::PushRequest;

/// The fields put back together: nothing of a body is lost or invented.
std::string bodyOf(const PushRequest& request) {
  const std::string tokens = request.task == server::kChangeTask
                                 ? "&tokenAntiguo=" + request.oldToken + "&tokenNuevo=" + request.newToken
                                 : "&token=" + request.token;
  return "&tarea=" + request.task + tokens + "&jsonApp=" + request.app + "&jsonDevice=" + request.device +
         "&jsonLibreria=" + request.library + "&jsonGeo=" + request.geo;
}

void enter(const PushRequest& request) {
  server::Registrations registrations("");
  const bool isChange = request.task == server::kChangeTask;
  if (isChange) {
    fuzz::check(!registrations.change(request), "an unknown token can't be changed");
    PushRequest first = request;
    first.token = request.oldToken;
    registrations.add(first);
    fuzz::check(registrations.change(request), "a known token is changed");
  } else {
    registrations.add(request);
  }
  PushRequest next = request;
  next.oldToken = isChange ? request.newToken : request.token;
  fuzz::check(registrations.change(next), "what was entered is found");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string body(reinterpret_cast<const char*>(data), size);
  const server::ParsedRequest parsed = server::parseRequest(body);
  fuzz::check(parsed.request.has_value() == parsed.problem.empty(), "a request or a problem");
  fuzz::check(parsed.problem.size() < 200 && std::none_of(parsed.problem.begin(), parsed.problem.end(),
                                                          [](char c) { return c >= 0 && c < ' '; }),
              "a problem fits on a line");
  if (!parsed.request) return 0;
  fuzz::check(bodyOf(*parsed.request) == body, "the fields are the whole body");
  // The database takes most of the time; some of the inputs are enough for it.
  if (size % 8 == 0) enter(*parsed.request);
  return 0;
}
