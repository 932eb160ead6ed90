// Push: the shared instance.
#include "facade/Push.h"
#include "facade/shared_slot.h"
#include "platform/Class.h"

namespace quorvantis {

namespace {

constexpr platform::Class kPushClass{"Push"};

// A plain pointer that owns one count: a static with a destructor would destroy the object under a running
// transport.
Push* _shared = nullptr;

class Synchronized {
 public:
  explicit Synchronized(platform::Class object) : object_(object) { platform::objc_sync_enter(object_); }
  ~Synchronized() { platform::objc_sync_exit(object_); }
  Synchronized(const Synchronized&) = delete;
  Synchronized& operator=(const Synchronized&) = delete;

 private:
  platform::Class object_;
};

}  // namespace

Push* Push::sharedMadeBy(platform::Ref<Push> (*allocInit)(void* receiver), void* receiver) {
  const Synchronized lock(kPushClass);
  if (_shared == nullptr) _shared = allocInit(receiver).detach();
  return _shared;
}

struct SharedSlot {
  static void empty() {
    const auto push = platform::Ref<Push>::adopt(std::exchange(_shared, nullptr));
    if (push && push->recogidaDatos) push->recogidaDatos->setDelegate(nullptr);
  }
};

void emptySharedSlot() {
  SharedSlot::empty();
}

}  // namespace quorvantis
