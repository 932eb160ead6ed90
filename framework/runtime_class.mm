// Which class of the runtime a name of the core stands for.
#import <QuorvantisPush/QuorvantisPush.h>

#include <string_view>

#include "platform/ios/bridge.h"

namespace quorvantis::platform {

// By the class object, not by name: an application may have a class of the same name.
::Class ios::runtimeClass(Class aClass) {
  return std::string_view(aClass.name) == "Push" ? [::Push class] : [::PushRequestData class];
}

}  // namespace quorvantis::platform
