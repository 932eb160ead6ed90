#include "facade/PushDelegate.h"

struct Host {
#ifdef REFUSED
  void onGetToken(int) {}
#else
  void onGetToken(quorvantis::platform::NSString) {}
#endif
  void onError(const quorvantis::platform::Object&) {}
};

void set(Host& host) {
  (void)quorvantis::PushDelegate(host);
}
