// Plays the steps of a scenario on a device, by way of a host application. Main thread.
#pragma once

#include <functional>

#include "device/device.h"
#include "scenario/host.h"
#include "scenario/scenario.h"

namespace quorvantis::scenario {

class PushService;

class Player {
 public:
  /// `service`: the embedded push server, nullptr when it runs elsewhere. All outlive the player.
  Player(device::Device& device, Host& host, PushService* service);
  ~Player();
  Player(const Player&) = delete;
  Player& operator=(const Player&) = delete;

  /// Throws ScenarioError for a step that turns out impossible.
  void play(const Step& step);

  /// Runs all that is due.
  void settle();

 private:
  void setDevice(const Step& step);
  void setApplication(const Step& step);
  void setLibrary(const Step& step);
  void store(const Step& step);
  void configureHost(const Step& step);
  void setRegistration(const Step& step);
  void setAuthorization(const Step& step);
  void queueAnswers(const Step& step);
  void activate(const Step& step);
  void deliverToken(const Step& step);
  void call(const Step& step);
  void deliverNotification(const Step& step);
  void deliver(const Step& step);
  void tapOK(const Step& step);
  void advance(const Step& step);
  void relaunch();
  void show();

  device::MainQueue::Runner runner();

  device::Device& device_;
  Host& host_;
  PushService* service_;
};

}  // namespace quorvantis::scenario
