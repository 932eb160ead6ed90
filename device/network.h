// The device's network: its own resolver and trust store, and the transport's limits. Threads: any.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>

namespace quorvantis::device {

/// Where a host's name leads, on this machine.
struct Endpoint {
  std::string address;
  std::uint16_t port = 0;

  friend bool operator==(const Endpoint&, const Endpoint&) = default;
};

struct TransportLimits {
  std::chrono::milliseconds connect = std::chrono::seconds(10);
  std::chrono::milliseconds total = std::chrono::seconds(60);
  std::size_t answerBytes = std::size_t{1} << 20;
};

class Network {
 public:
  /// Other names are unknown hosts.
  void setHost(std::string name, Endpoint endpoint);
  [[nodiscard]] std::optional<Endpoint> resolve(const std::string& name) const;

  /// The only certificates (PEM) that the device trusts. None at first.
  void setTrustedAuthorities(std::string pem);
  [[nodiscard]] std::string trustedAuthorities() const;

  void setLimits(TransportLimits limits);
  [[nodiscard]] TransportLimits limits() const;

  /// In airplane mode every request fails when its turn comes.
  void setAirplaneMode(bool on);
  [[nodiscard]] bool isInAirplaneMode() const;

  /// Called just before a request is sent, on the thread that posts it; not in airplane mode.
  void setBeforeRequest(std::function<void()> hook);
  void beforeRequest() const;

  /// Called with the reason when a request fails, for diagnostics, on the thread that posts it. Not for
  /// cancelled requests.
  void setOnFailure(std::function<void(const std::string& reason)> hook);
  void requestFailed(const std::string& reason) const;

 private:
  mutable std::mutex mutex_;
  std::map<std::string, Endpoint, std::less<>> hosts_;
  std::string authorities_;
  TransportLimits limits_;
  bool airplaneMode_ = false;
  std::function<void()> beforeRequest_;
  std::function<void(const std::string& reason)> onFailure_;
};

}  // namespace quorvantis::device
