// Apple's function that sends a message, for those of one object without a result; GNU's runtime looks the
// method up.
#pragma once

#include_next <objc/message.h>

#ifdef __cplusplus
inline void objc_msgSend(id receiver, SEL selector, id argument) {
  reinterpret_cast<void (*)(id, SEL, id)>(objc_msg_lookup(receiver, selector))(receiver, selector, argument);
}
#endif
