// The application's user defaults on the device: values by key that outlive the process, in one SQLite
// database; in a file, or in memory for a phone that nobody needs again.
//
// What is set is seen at once by every reader; synchronize() returns when all of it is on disk. The file is
// opened and read whole on first use and belongs to one process at a time. A store that can't be read or
// written is an error said aloud, never an empty store.
//
// Threads: any.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "json/value.h"

namespace quorvantis::device {

/// What is wrong with the file, where, and how to mend it.
class SettingsError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class Settings {
 public:
  /// Nothing is touched before the first use. The file is made when it is missing, readable by its owner
  /// alone. A process that is killed while it makes it may leave a draft, FILE.new-XXXXXX, which nothing
  /// reads. Without a name the settings are in memory: they outlive the process on the phone, but not this
  /// object, and leave nothing behind.
  explicit Settings(std::filesystem::path file);
  /// Closes, but can't tell of failures as close() does.
  ~Settings();
  Settings(const Settings&) = delete;
  Settings& operator=(const Settings&) = delete;

  /// Opens the file if that has not happened. Throws SettingsError, as does every operation below.
  void open();
  [[nodiscard]] bool isOpen() const;

  [[nodiscard]] std::optional<json::Value> get(std::string_view key);

  /// `value` is a property-list value (see isPropertyList) of UTF-8 texts, at most json::kDeepest deep;
  /// otherwise this throws std::invalid_argument.
  void set(std::string key, json::Value value);
  void remove(std::string_view key);

  /// All that is stored.
  [[nodiscard]] json::Dictionary values();

  /// Writes what changed since the last call, all or nothing; touches no disk when nothing did.
  void synchronize();

  /// The process ends: what was set and not yet synchronised reaches the disk, as the phone's daemon sees to,
  /// and the next use reads the file again.
  void close();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

/// Whether the user defaults take the value: no null at any depth.
bool isPropertyList(const json::Value& value);

}  // namespace quorvantis::device
