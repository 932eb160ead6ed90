#include "device/network.h"

#include <utility>

#include "base/ascii.h"

namespace quorvantis::device {

void Network::setHost(std::string name, Endpoint endpoint) {
  const std::lock_guard lock(mutex_);
  hosts_.insert_or_assign(base::lowerCase(std::move(name)), std::move(endpoint));
}

std::optional<Endpoint> Network::resolve(const std::string& name) const {
  const std::lock_guard lock(mutex_);
  const auto host = hosts_.find(base::lowerCase(name));
  if (host == hosts_.end()) return std::nullopt;
  return host->second;
}

void Network::setTrustedAuthorities(std::string pem) {
  const std::lock_guard lock(mutex_);
  authorities_ = std::move(pem);
}

std::string Network::trustedAuthorities() const {
  const std::lock_guard lock(mutex_);
  return authorities_;
}

void Network::setLimits(TransportLimits limits) {
  const std::lock_guard lock(mutex_);
  limits_ = limits;
}

TransportLimits Network::limits() const {
  const std::lock_guard lock(mutex_);
  return limits_;
}

void Network::setAirplaneMode(bool on) {
  const std::lock_guard lock(mutex_);
  airplaneMode_ = on;
}

bool Network::isInAirplaneMode() const {
  const std::lock_guard lock(mutex_);
  return airplaneMode_;
}

void Network::setBeforeRequest(std::function<void()> hook) {
  const std::lock_guard lock(mutex_);
  beforeRequest_.swap(hook);
}

void Network::beforeRequest() const {
  std::unique_lock lock(mutex_);
  const auto hook = airplaneMode_ ? nullptr : beforeRequest_;
  lock.unlock();
  if (hook) hook();
}

void Network::setOnFailure(std::function<void(const std::string& reason)> hook) {
  const std::lock_guard lock(mutex_);
  onFailure_.swap(hook);
}

void Network::requestFailed(const std::string& reason) const {
  std::unique_lock lock(mutex_);
  const auto hook = onFailure_;
  lock.unlock();
  if (hook) hook(reason);
}

}  // namespace quorvantis::device
