// A simulated phone: the facts about it, the application on it, what its user decides, and everything around
// the library that can be observed. It is independent of the library and of the seam, whose two sides act on
// it.
//
// A process has one device at a time, and a fresh one keeps nothing of an earlier one but the settings file
// that it is given.
//
// Threads: made, driven and destroyed on the main thread; the user defaults are for any; the record, the
// queue, the settings and the network document their own thread rules.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "device/main_queue.h"
#include "device/network.h"
#include "device/record.h"
#include "device/screen.h"
#include "device/settings.h"

namespace quorvantis::device {

/// Device builds handle notifications, simulator builds do not.
enum class Build { device, simulator };

struct Facts {
  std::string systemVersion = "17.0";
  std::string name = "iPhone";
  std::string model = "iPhone";
  std::optional<std::string> country = "US";
  std::optional<std::vector<std::string>> languages = {{"en"}};
  /// The device token's bytes; nothing: the system fails to get one, with `tokenError`.
  std::optional<std::string> token = defaultToken();
  std::string tokenError;

  /// 32 bytes: 0, 1, 2 and so on.
  static std::string defaultToken();
};

enum class ApplicationState { active = 0, inactive = 1, background = 2 };

struct Application {
  ApplicationState state = ApplicationState::active;
  std::optional<std::string> version = "1.0";
  bool canOpenURL = true;  ///< whether it responds to openURL:options:completionHandler:
  std::int64_t badge = 0;
};

/// The library's bundle.
struct LibraryBundle {
  std::optional<std::string> version = "1.0";
  bool loaded = true;  ///< whether it can be found by its identifier
};

/// How the maker's registration framework behaves.
struct RegistrationBehaviour {
  bool finishes = true;
  json::Dictionary stores;  ///< what it stores in the settings just before it reports
};

/// How requests for permission end.
struct AuthorizationBehaviour {
  bool granted = true;
  std::optional<std::string> error;
};

/// The system's calls to the host's application delegate.
struct ApplicationDelegate {
  std::function<void(const std::string& token)> didRegister;
  std::function<void(const std::string& error)> didFailToRegister;
};

class Device {
 public:
  /// Throws std::logic_error when the process already has one. Without a file the settings are in memory.
  explicit Device(std::filesystem::path settingsFile = {});
  ~Device();
  Device(const Device&) = delete;
  Device& operator=(const Device&) = delete;

  /// Throws std::logic_error when there is none.
  static Device& current();

  Facts facts;
  Application application;
  LibraryBundle library;
  RegistrationBehaviour registration;
  /// Nothing: the user has not decided. The answer to a request for permission then waits when its turn
  /// comes, and so does everything behind it in the queue (see MainQueue::postWhen).
  std::optional<AuthorizationBehaviour> authorization = AuthorizationBehaviour{};
  ApplicationDelegate applicationDelegate;
  Build build = Build::device;

  MainQueue queue;
  Record record;
  Screen screen{record};
  Network network;
  Settings settings;

  /// The next new UUID: 00000000-0000-4000-8000-000000000001, and so on, counted in decimal.
  std::string newUUID();

  // The application's calls to the system.
  void requestAuthorization(
      std::int64_t options,
      std::function<void(bool granted, const std::optional<std::string>& error)> answer);
  void registerForRemoteNotifications();
  void setBadge(std::int64_t number);
  void playSystemSound(std::uint32_t sound);
  /// Nothing: the library passed nil.
  void open(const std::optional<std::string>& url);

  /// The user defaults as the application's process sees and changes them; the changes are recorded. A store
  /// that can't be opened stays empty and unwritable until the process ends, even if it could be opened
  /// later: what the process has read until then would be wrong.
  [[nodiscard]] std::optional<json::Value> userDefault(std::string_view key);
  void setUserDefault(const std::string& key, std::optional<json::Value> value);
  bool synchronizeUserDefaults();

  /// Another component of the application stores these, which is not recorded.
  void storeFromElsewhere(const json::Dictionary& values);
  void removeFromElsewhere(const std::vector<std::string>& keys);

  /// The first failure of the settings since the start, if any: on a phone it would go unreported.
  [[nodiscard]] std::optional<std::string> settingsFailure() const;

  /// Identifies the process on the phone: a new number after each relaunch.
  [[nodiscard]] std::uint64_t process() const { return process_; }

  /// The process on the phone ends: pending work is dropped, alerts disappear, the settings are written to
  /// disk.
  void endProcess();

 private:
  template <class Work>
  auto withSettings(Work work) -> decltype(work());

  mutable std::mutex settingsMutex_;
  std::optional<std::string> settingsFailure_;
  bool settingsAreShut_ = false;
  int uuids_ = 0;
  std::uint64_t process_ = 0;
};

}  // namespace quorvantis::device
