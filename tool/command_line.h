// Parses the command line and runs the command that it names.
#pragma once

#include "tool/payload.h"
#include "tool/phone.h"
#include "tool/run.h"
#include "tool/serve.h"

namespace quorvantis::tool {

/// The function behind each command; it returns the exit status, or throws. A command without one is not
/// offered.
struct Commands {
  const char* about;  ///< the program, in one line
  int (*demo)() = nullptr;
  int (*payload)(const PayloadOptions& options) = nullptr;
  int (*run)(const RunOptions& options) = nullptr;
  int (*serve)(const ServeOptions& options) = nullptr;
  int (*phone)(const PhoneOptions& options) = nullptr;
};

/// Runs the command that the arguments name and returns the exit status. Bad arguments: one line on
/// standard error, status 2.
int runCommandLine(int argc, char** argv, const Commands& commands);

}  // namespace quorvantis::tool
