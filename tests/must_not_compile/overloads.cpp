#include "facade/PushDelegate.h"

struct Host {
  void onUpdateToken(int) {}
#ifdef REFUSED
  void onUpdateToken(const char*) {}
#else
  void onUpdateToken(const quorvantis::platform::Object&) {}
#endif
  template <class T>
  void onError(const T&) {}
};

void set(Host& host) {
  (void)quorvantis::PushDelegate(host);
}
