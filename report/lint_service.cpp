#include "report/lint_service.h"

#include "json/write.h"
#include "report/json.h"
#include "report/payload_report.h"

namespace quorvantis::report {

namespace {

/// The request is the version, a line feed and the text.
std::string answer(const std::string& request) {
  const std::size_t end = request.find('\n');
  return json::write(jsonOf(explained(checkText(request.substr(end + 1)), request.substr(0, end))));
}

}  // namespace

LintService::LintService() : helper_(answer) {}

std::string LintService::reportOn(const std::string& text, const std::string& systemVersion) {
  const std::lock_guard lock(mutex_);
  helper_.send(systemVersion + '\n' + text);
  return helper_.receive();
}

}  // namespace quorvantis::report
