// The platform's view of the library's own objects on the simulated device, and weak references to them.
// Threads: any.
#pragma once

#include <memory>
#include <mutex>

#include "platform/NSObject.h"
#include "platform/simulated/Instance.h"

namespace quorvantis::platform::simulated {

/// The front of an object of the library: owns it, and forwards messages to it.
class Front final : public Instance {
 public:
  explicit Front(NSObject& core) : core_(&core) {}
  ~Front() override;

  [[nodiscard]] bool respondsToSelector(Selector selector) const override {
    return core_->respondsToSelector(selector);
  }
  void performSelector(Selector selector, const Object& withObject) override {
    core_->performSelector(selector, withObject);
  }

  [[nodiscard]] NSObject& core() const { return *core_; }
  [[nodiscard]] bool isLettingGo() const { return lettingGo_; }

  struct Cell {
    std::mutex mutex;
    Front* front;
  };
  /// What weak references hold: `front` becomes null when the object ends.
  std::shared_ptr<Cell> cell();

 protected:
  void destroy() noexcept override;

 private:
  void forget() noexcept;

  NSObject* core_;
  bool lettingGo_ = false;
  std::mutex mutex_;
  std::shared_ptr<Cell> cell_;
};

/// The library's object behind a handle, or nullptr for any other.
NSObject* coreOf(const Object& object);

/// A delegate that is not retained and never dangles.
class WeakObject {
 public:
  WeakObject() = default;
  /// `object`: one of the library's, or nil.
  explicit WeakObject(const Object& object);

  /// The object, counted for the caller; nil once it has ended.
  [[nodiscard]] Object lock() const;

 private:
  std::shared_ptr<Front::Cell> cell_;
};

/// Sends a message to a delegate through the protocol that the message belongs to: `send` gets the delegate
/// as that protocol. Does nothing for a nil delegate; raises for an object that does not adopt the protocol.
template <class Protocol, class Send>
void sendTo(const Object& delegate, Selector selector, Send send) {
  if (!delegate) return;
  auto* adopter = dynamic_cast<Protocol*>(coreOf(delegate));
  if (adopter == nullptr) doesNotRecognizeSelector(selector);
  send(*adopter);
}

}  // namespace quorvantis::platform::simulated
