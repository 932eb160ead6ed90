#include "facade/PushDelegate.h"

struct Host final {
#ifdef REFUSED
  void onReceiveNotification(const char*) {}
#else
  void onReceiveNotification(const quorvantis::platform::NSDictionary&) {}
#endif
  void onError(const quorvantis::platform::Object&) {}
};

void set(Host& host) {
  (void)quorvantis::PushDelegate(host);
}
