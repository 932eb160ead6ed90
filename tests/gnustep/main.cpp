// quorvantis-push over the Objective-C framework: only the `run` command.
#include "tool/command_line.h"

int main(int argc, char** argv) {
  using namespace quorvantis::tool;
  return runCommandLine(
      argc, argv, {.about = "QuorvantisPush's Objective-C framework on a simulated phone.", .run = run});
}
