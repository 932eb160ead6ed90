#include "facade/PushDelegate.h"

struct Host {
#ifdef REFUSED
  void onErrors(const quorvantis::platform::Object&) {}
  bool respondsToSelector(quorvantis::platform::Selector) const {
    return true;
  }
#else
  void onError(const quorvantis::platform::Object&) {}
#endif
};

void set(Host& host) {
  (void)quorvantis::PushDelegate(host);
}
