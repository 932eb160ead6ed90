#include "facade/PushDelegate.h"

class Host {
 public:
  void onUpdateToken(const quorvantis::platform::Object&) {}
#ifdef REFUSED
 private:
#endif
  void onRegisterToken(const quorvantis::platform::Object&) {}
};

void set(Host& host) {
  (void)quorvantis::PushDelegate(host);
}
