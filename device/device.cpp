#include "device/device.h"

#include <cstdio>
#include <stdexcept>
#include <utility>

#include "device/events.h"

namespace quorvantis::device {

namespace {

Device* currentDevice = nullptr;
std::uint64_t processes = 0;

constexpr std::string_view kLanguagesKey = "AppleLanguages";

}  // namespace

std::string Facts::defaultToken() {
  std::string token;
  for (char byte = 0; byte < 32; ++byte) token.push_back(byte);
  return token;
}

Device::Device(std::filesystem::path settingsFile) : settings(std::move(settingsFile)) {
  if (currentDevice != nullptr) throw std::logic_error("this process already has a simulated device");
  currentDevice = this;
  process_ = ++processes;
}

Device::~Device() {
  queue.clear();
  screen.clear();
  currentDevice = nullptr;
}

Device& Device::current() {
  if (currentDevice == nullptr) throw std::logic_error("this process has no simulated device");
  return *currentDevice;
}

std::string Device::newUUID() {
  char text[37];
  std::snprintf(text, sizeof text, "00000000-0000-4000-8000-%012d", ++uuids_);
  return text;
}

void Device::requestAuthorization(
    std::int64_t options, std::function<void(bool granted, const std::optional<std::string>& error)> answer) {
  record.add(events::authorizationRequested(options));
  queue.postWhen(
      [this] { return authorization.has_value(); },
      [this, answer = std::move(answer)] { answer(authorization->granted, authorization->error); });
}

void Device::registerForRemoteNotifications() {
  record.add(events::registerForRemoteNotifications());
  queue.post([this] {
    if (facts.token) {
      if (applicationDelegate.didRegister) applicationDelegate.didRegister(*facts.token);
    } else {
      if (applicationDelegate.didFailToRegister) applicationDelegate.didFailToRegister(facts.tokenError);
    }
  });
}

void Device::setBadge(std::int64_t number) {
  application.badge = number;
  record.add(events::badge(number));
}

void Device::playSystemSound(std::uint32_t sound) {
  record.add(events::vibrated(sound));
}

void Device::open(const std::optional<std::string>& url) {
  record.add(events::opened(url));
}

template <class Work>
auto Device::withSettings(Work work) -> decltype(work()) {
  const std::lock_guard lock(settingsMutex_);
  if (settingsAreShut_) return {};
  try {
    return work();
  } catch (const SettingsError& error) {
    if (!settingsFailure_) settingsFailure_ = error.what();
    settingsAreShut_ = !settings.isOpen();
    return {};
  }
}

std::optional<std::string> Device::settingsFailure() const {
  const std::lock_guard lock(settingsMutex_);
  return settingsFailure_;
}

std::optional<json::Value> Device::userDefault(std::string_view key) {
  auto stored = withSettings([&] { return settings.get(key); });
  if (!stored && key == kLanguagesKey && facts.languages) {
    return json::Array(facts.languages->begin(), facts.languages->end());
  }
  return stored;
}

void Device::setUserDefault(const std::string& key, std::optional<json::Value> value) {
  device::Event event = events::stored(key, value ? *value : json::Value());
  withSettings([&] {
    if (value) {
      settings.set(key, *std::move(value));
    } else {
      settings.remove(key);
    }
    return true;
  });
  record.add(std::move(event));
}

bool Device::synchronizeUserDefaults() {
  record.add(events::synchronized());
  return withSettings([&] {
    settings.synchronize();
    return true;
  });
}

void Device::storeFromElsewhere(const json::Dictionary& values) {
  withSettings([&] {
    for (const auto& [key, value] : values) settings.set(key, value);
    return true;
  });
}

void Device::removeFromElsewhere(const std::vector<std::string>& keys) {
  withSettings([&] {
    for (const std::string& key : keys) settings.remove(key);
    return true;
  });
}

void Device::endProcess() {
  process_ = ++processes;
  queue.clear();
  screen.clear();
  withSettings([&] {
    settings.close();
    return true;
  });
  const std::lock_guard lock(settingsMutex_);
  settingsAreShut_ = false;
}

}  // namespace quorvantis::device
