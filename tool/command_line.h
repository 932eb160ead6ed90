// The tool's arguments: which command they name, and its options.
#pragma once

#include "tool/payload.h"
#include "tool/phone.h"
#include "tool/run.h"
#include "tool/serve.h"

namespace quorvantis::tool {

/// What is run for each command, which returns the exit status. A command without a function is not offered.
struct Commands {
  const char* about;  ///< the program, in one line
  int (*demo)() = nullptr;
  int (*payload)(const PayloadOptions& options) = nullptr;
  int (*run)(const RunOptions& options) = nullptr;
  int (*serve)(const ServeOptions& options) = nullptr;
  int (*phone)(const PhoneOptions& options) = nullptr;
};

/// Runs the command that the arguments name and returns the exit status. Wrong arguments: one line on
/// standard error, status 2.
int runCommandLine(int argc, char** argv, const Commands& commands);

}  // namespace quorvantis::tool
