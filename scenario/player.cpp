#include "scenario/player.h"

namespace quorvantis::scenario {

Player::Player(device::Device& device, Host& host, PushService* service) : world_{device, host, service} {
  host.launch();
}

Player::~Player() {
  world_.device.endProcess();
  world_.host.terminate();
}

void Player::play(const Step& step) {
  try {
    for (const Play& play : step.plays_) play(world_);
  } catch (const StepError& error) {
    throw ScenarioError(step.line(), error.what());
  }
}

void Player::goOn() {
  world_.device.queue.goOn(world_.runner());
}

}  // namespace quorvantis::scenario
