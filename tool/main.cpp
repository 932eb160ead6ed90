// quorvantis-push.
#include "tool/command_line.h"
#include "tool/demo.h"

int main(int argc, char** argv) {
  using namespace quorvantis::tool;
  return runCommandLine(
      argc, argv,
      {.about = "QuorvantisPush on a simulated phone: try it, script it, see what a notification does.",
       .demo = demo,
       .payload = explainPayloads,
       .run = run,
       .serve = serve,
       .phone = phone});
}
