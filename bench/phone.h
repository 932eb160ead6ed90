// The phone that every measurement of a program runs on: device, host and the library's shared object.
// Main thread.
#pragma once

#include "device/device.h"
#include "facade/Push.h"
#include "tests/scratch_folder.h"

namespace quorvantis::bench {

/// Receives the library's callbacks, and does nothing.
class Host {
 public:
  void onReceiveNotification(const platform::NSDictionary& report) { last = report; }
  void onRegisterToken(const platform::Object& token) { last = token; }
  void onUpdateToken(const platform::Object& token) { last = token; }

  platform::Object last;
};

class Phone {
 public:
  /// The library's shared object is made with it.
  Phone();
  ~Phone();
  Phone(const Phone&) = delete;
  Phone& operator=(const Phone&) = delete;

  /// The process's one phone, made on the first call.
  static Phone& only();

  /// Clears the device's record, so that no round costs more than the one before.
  void forget();
  void settle();

  ScratchFolder folder;
  device::Device device{folder.path() / "settings.sqlite"};
  Host host;
  Push& push;
};

}  // namespace quorvantis::bench
