// quorvantis-push.
#include "tool/command_line.h"
#include "tool/demo.h"

int main(int argc, char** argv) {
  using namespace quorvantis::tool;
  return runCommandLine(argc, argv,
                        {.about = "QuorvantisPush on a simulated phone: try it, script it.",
                         .demo = demo,
                         .run = run,
                         .serve = serve});
}
