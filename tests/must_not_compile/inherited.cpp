#include "facade/PushDelegate.h"

struct Base {
  virtual ~Base() = default;
  virtual void onError(const quorvantis::platform::Object&) = 0;
};

#ifdef REFUSED
struct Host : private Base {
#else
struct Host : Base {
#endif
  void onGetToken(const quorvantis::platform::NSString&) {}
};

void set(Host& host) {
  (void)quorvantis::PushDelegate(host);
}
