// provider_service TOPIC TOKEN: the stand-in for Apple's service, with the library on a separate thread.
// Prints its port; at the end of standard input it prints how many notifications the library handled, and
// exits.
#include <condition_variable>
#include <deque>
#include <iostream>
#include <mutex>
#include <string>
#include <thread>

#include "apns/service.h"
#include "base/hexadecimal.h"
#include "bench/phone.h"
#include "platform/UIApplication.h"
#include "platform/simulated/values.h"

namespace {

using namespace quorvantis;

constexpr std::size_t kMostWaiting = 1024;

class Library final : public apns::Phone {
 public:
  explicit Library(std::string token) : token_(std::move(token)), thread_([this] { handleAll(); }) {}
  ~Library() override { end(); }

  [[nodiscard]] std::optional<apns::KnownToken> find(std::string_view token) const override {
    return token == token_ ? std::optional(apns::KnownToken{}) : std::nullopt;
  }

  void arrive(apns::Notification notification, const apns::Report&) override {
    std::unique_lock lock(mutex_);
    if (waiting_.size() == kMostWaiting) {
      work_.notify_one();
      room_.wait(lock, [this] { return waiting_.size() < kMostWaiting; });
    }
    waiting_.push_back(std::move(notification.payload));
  }

  void haveArrived() override { work_.notify_one(); }

  void refused(const apns::Report&) override {}

  std::size_t end() {
    if (!thread_.joinable()) return handled_;
    {
      const std::lock_guard lock(mutex_);
      ended_ = true;
    }
    work_.notify_one();
    thread_.join();
    return handled_;
  }

 private:
  void handleAll() {
    bench::Phone phone;
    phone.device.application.state = device::ApplicationState::background;
    for (;;) {
      std::deque<json::Dictionary> batch;
      {
        std::unique_lock lock(mutex_);
        work_.wait(lock, [this] { return ended_ || !waiting_.empty(); });
        if (waiting_.empty()) return;
        batch.swap(waiting_);
      }
      room_.notify_all();
      for (json::Dictionary& payload : batch) handle(phone, std::move(payload));
      phone.forget();
    }
  }

  void handle(bench::Phone& phone, json::Dictionary payload) {
    const auto object =
        platform::simulated::objectFrom(json::Value(std::move(payload))).as<platform::NSDictionary>();
    phone.push.applicationDidReceiveRemoteNotification(platform::UIApplication::sharedApplication(), object,
                                                       nullptr);
    phone.settle();
    if (phone.host.last) ++handled_;
    phone.host.last = nullptr;
  }

  const std::string token_;
  std::mutex mutex_;
  std::condition_variable work_;
  std::condition_variable room_;
  std::deque<json::Dictionary> waiting_;
  bool ended_ = false;
  std::size_t handled_ = 0;  // of the thread, while it lives
  std::thread thread_;
};

}  // namespace

int main(int count, char** words) {
  if (count != 3) return 2;
  Library library(base::bytesFromHexadecimal(words[2]).value_or(""));
  {
    apns::Service service(apns::makeAuthority(), library, {.rules = {.topic = words[1]}});
    std::cout << service.port() << '\n' << std::flush;
    while (std::cin.get() != std::char_traits<char>::eof()) {
    }
  }
  std::cout << library.end() << '\n';
  return 0;
}
