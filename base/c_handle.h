// Owners of the objects that C libraries hand out.
#pragma once

#include <memory>

namespace quorvantis::base {

template <auto release>
struct Releaser {
  template <class T>
  void operator()(T* object) const {
    release(object);
  }
};

/// A T that `release` lets go of.
template <class T, auto release>
using CHandle = std::unique_ptr<T, Releaser<release>>;

}  // namespace quorvantis::base
