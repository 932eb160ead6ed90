#include "platform/dispatch.h"

#include <dispatch/dispatch.h>

namespace quorvantis::platform {

void dispatch_async_main(std::function<void()> task) {
  dispatch_async(dispatch_get_main_queue(), ^{
    task();
  });
}

void dispatch_after_main(std::int64_t delta, std::function<void()> task) {
  dispatch_after(dispatch_time(DISPATCH_TIME_NOW, delta), dispatch_get_main_queue(), ^{
    task();
  });
}

}  // namespace quorvantis::platform
