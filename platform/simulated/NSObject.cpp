#include "platform/NSObject.h"

#include "platform/simulated/Front.h"

namespace quorvantis::platform {

using simulated::Front;

struct FrontAccess {
  static void destroy(NSObject* object) {
    object->emptyFields();
    object->emptyFields();  // what their destruction has set
    delete object;
  }
};

NSObject::NSObject(void* front) : front_(front), ownsFront_(front == nullptr) {
  if (ownsFront_) front_ = static_cast<simulated::Instance*>(new Front(*this));
}

NSObject::~NSObject() {
  if (!ownsFront_) return;
  auto* front = static_cast<Front*>(static_cast<simulated::Instance*>(front_));
  if (!front->isLettingGo()) delete front;  // construction did not complete
}

Object NSObject::self() const {
  return Object::retain(front_);
}

bool NSObject::respondsToSelector(Selector /*selector*/) const {
  return false;
}

void NSObject::performSelector(Selector selector, const Object& /*withObject*/) {
  doesNotRecognizeSelector(selector);
}

namespace simulated {

Front::~Front() {
  forget();
}

std::shared_ptr<Front::Cell> Front::cell() {
  const std::lock_guard lock(mutex_);
  if (!cell_) {
    cell_ = std::make_shared<Cell>();
    cell_->front = this;
  }
  return cell_;
}

void Front::destroy() noexcept {
  if (lettingGo_) return;  // the object was retained and released during its destruction
  forget();
  lettingGo_ = true;
  FrontAccess::destroy(core_);
  delete this;
}

void Front::forget() noexcept {
  const std::lock_guard lock(mutex_);
  if (!cell_) return;
  const std::lock_guard cellLock(cell_->mutex);
  cell_->front = nullptr;
}

NSObject* coreOf(const Object& object) {
  auto* front = dynamic_cast<Front*>(instanceOf(object));
  return front == nullptr ? nullptr : &front->core();
}

WeakObject::WeakObject(const Object& object) {
  if (auto* front = dynamic_cast<Front*>(instanceOf(object))) cell_ = front->cell();
}

Object WeakObject::lock() const {
  if (!cell_) return nullptr;
  const std::lock_guard lock(cell_->mutex);
  if (cell_->front == nullptr || !cell_->front->tryRetain()) return nullptr;
  return Object::adopt(static_cast<Instance*>(cell_->front));
}

}  // namespace simulated
}  // namespace quorvantis::platform
