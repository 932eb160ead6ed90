#include "facade/Push.h"

struct Host {
  void onError(const quorvantis::platform::Object&) {}
};

void set(quorvantis::Push& push) {
#ifdef REFUSED
  push.setDelegate(Host());
#else
  static Host host;
  push.setDelegate(host);
#endif
}
