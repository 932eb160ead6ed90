#include <functional>

#include "facade/PushDelegate.h"

struct Host {
  void onGetToken(const quorvantis::platform::NSString&) {}
#ifdef REFUSED
  int onError = 0;
#else
  std::function<void(const quorvantis::platform::Object&)> onError;
#endif
};

void set(Host& host) {
  (void)quorvantis::PushDelegate(host);
}
