#include "tool/exit_status.h"

#include <iostream>

#include "console/usage_error.h"
#include "scenario/scenario.h"

namespace quorvantis::tool {

namespace {

int fail(int status, const std::string& message) {
  std::cout.flush();
  std::cerr << message << '\n';
  return status;
}

}  // namespace

int statusOf(const std::function<int()>& work, const std::string& scenario) {
  const std::string tool = "quorvantis-push: ";
  try {
    const int status = work();
    std::cout.flush();
    return status;
  } catch (const scenario::ScenarioError& error) {
    return fail(kUnusable, scenario + ':' + std::to_string(error.line()) + ": " + error.what());
  } catch (const console::UsageError& error) {
    return fail(kUnusable, tool + error.what());
  } catch (const std::exception& error) {
    return fail(kFailed, tool + error.what());
  }
}

}  // namespace quorvantis::tool
