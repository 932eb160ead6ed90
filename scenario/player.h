// Plays steps on a device, through a host application: those of a scenario one after the other, or each when
// a person asks for it. The device's record has the results. Main thread.
//
// When a person answers the prompt for permission, the device starts undecided (Device::authorization has no
// value), and a "settle" or "advance" can stop before the answer. Then only "authorization" steps make sense;
// goOn() completes the step that stopped. In a saved scenario the "authorization" comes before that step, and
// gives the same events.
#pragma once

#include "device/device.h"
#include "scenario/host.h"
#include "scenario/scenario.h"
#include "scenario/world.h"

namespace quorvantis::scenario {

class Player {
 public:
  /// `service`: the embedded push server, nullptr when it runs elsewhere. All outlive the player.
  Player(device::Device& device, Host& host, PushService* service);
  ~Player();
  Player(const Player&) = delete;
  Player& operator=(const Player&) = delete;

  /// Throws ScenarioError for a step that turns out impossible.
  void play(const Step& step);

  /// Whether the step that was played last stopped before the answer to a request for permission.
  [[nodiscard]] bool isStopped() const { return world_.device.queue.isStopped(); }

  /// Continues the step that stopped, if one did.
  void goOn();

 private:
  World world_;
};

}  // namespace quorvantis::scenario
