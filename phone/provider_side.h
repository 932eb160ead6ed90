// The phone as the stand-in for Apple's service knows it: what a provider sends reaches it on its own thread.
//
// Threads: any, but for made and destroyed.
#pragma once

#include <atomic>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <string>

#include "apns/phone.h"
#include "lint/report.h"
#include "phone/phone.h"
#include "phone/worker.h"

namespace quorvantis::phone {

class ProviderSide final : public apns::Phone {
 public:
  /// `onRequest` is told of each request, with what the linter says of what was taken, on the service's
  /// threads.
  using OnRequest = std::function<void(const apns::Report& report, const lint::PayloadReport& payload)>;

  ProviderSide(phone::Phone& phone, Worker& worker, OnRequest onRequest)
      : phone_(phone), worker_(worker), onRequest_(std::move(onRequest)) {}

  [[nodiscard]] std::optional<apns::KnownToken> find(std::string_view token) const override;
  void arrive(apns::Notification notification, const apns::Report& report) override;
  void haveArrived() override;
  void refused(const apns::Report& report) override;

  /// Whether a payload was taken that has an error.
  [[nodiscard]] bool tookErrors() const { return tookErrors_; }

 private:
  struct Arrival {
    Arrive notification;
    json::Dictionary told;
  };

  void receiveAll();

  phone::Phone& phone_;
  Worker& worker_;
  const OnRequest onRequest_;
  std::mutex mutex_;
  std::condition_variable received_;
  std::deque<Arrival> arrivals_;
  std::atomic<bool> tookErrors_ = false;
};

}  // namespace quorvantis::phone
