// The phone as the stand-in for Apple's service sees it: hands providers' notifications to the phone's
// thread.
//
// Threads: any, except for construction and destruction.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>

#include "apns/phone.h"
#include "phone/phone.h"
#include "phone/worker.h"
#include "report/payload_report.h"

namespace quorvantis::phone {

class ProviderSide final : public apns::Phone {
 public:
  /// `onRequest` is called for each request, with the linter's findings in an accepted payload, on the
  /// service's threads.
  using OnRequest = std::function<void(const apns::Report& report, const report::PayloadReport& payload)>;

  ProviderSide(phone::Phone& phone, Worker& worker, OnRequest onRequest)
      : phone_(phone), worker_(worker), onRequest_(std::move(onRequest)) {}

  [[nodiscard]] apns::Room room() const override;
  [[nodiscard]] std::optional<apns::KnownToken> find(std::string_view token) const override;
  void arrive(apns::Notification notification, const apns::Report& report) override;
  void haveArrived() override;
  void refused(const apns::Report& report) override;

  /// Whether an accepted payload had an error.
  [[nodiscard]] bool acceptedErrors() const { return acceptedErrors_; }

 private:
  struct Arrival {
    Arrive notification;
    json::Dictionary line;
  };

  /// Adds a line for a request of which the phone hears nothing.
  void note(const apns::Report& report);
  void receiveAll();

  phone::Phone& phone_;
  Worker& worker_;
  const OnRequest onRequest_;
  std::mutex mutex_;
  std::condition_variable received_;
  std::deque<Arrival> arrivals_;
  std::atomic<std::size_t> underWay_ = 0;  // arrivals that the phone does not have yet
  std::atomic<bool> acceptedErrors_ = false;
};

}  // namespace quorvantis::phone
