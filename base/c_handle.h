// Owners of the objects of C libraries.
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

/// Owns a T, which `release` frees.
template <class T, auto release>
using CHandle = std::unique_ptr<T, Releaser<release>>;

}  // namespace quorvantis::base
