// Plays a scenario on a phone of its own, to learn whether it can be played before the phone at hand is given
// up for it. A process can have only one phone, so a helper process does the work.
//
// Threads: made before the process has any but the main thread; then any.
#pragma once

#include <mutex>
#include <string>

#include "base/helper_process.h"
#include "device/device.h"
#include "json/value.h"
#include "phone/transcript.h"

namespace quorvantis::phone {

class Rehearsal {
 public:
  /// Throws std::system_error.
  Rehearsal(device::Build build, Limits limits);

  /// `stored` is what the phone has stored before. Throws scenario::ScenarioError or Full for what a fresh
  /// phone could not do; with a push server elsewhere its answers may still make a difference, since the
  /// rehearsal has its own. Throws std::runtime_error when the helper fails.
  void play(const std::string& scenario, const json::Dictionary& stored);

 private:
  std::mutex mutex_;
  base::HelperProcess helper_;
};

}  // namespace quorvantis::phone
