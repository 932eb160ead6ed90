// The application's user defaults on the device: values by key that outlive the process on the phone, in an
// SQLite database, either in a file or in memory.
//
// A value that is set is visible to every reader at once; synchronize() returns when all are on disk. The
// file is opened and read completely on first use and belongs to one process at a time. A store that can't be
// read or written is reported as an error, never treated as an empty store.
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

/// What is wrong with the file, where, and how to fix it.
class SettingsError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class Settings {
 public:
  /// Nothing is touched before the first use. A missing file is created, readable only by its owner. A
  /// process that is killed while it does so may leave a draft, FILE.new-XXXXXX, which nothing reads. Without
  /// a name the settings are in memory: they outlive the process on the phone, but not this object, and leave
  /// nothing behind.
  explicit Settings(std::filesystem::path file);
  /// Closes, but can't report failures as close() does.
  ~Settings();
  Settings(const Settings&) = delete;
  Settings& operator=(const Settings&) = delete;

  /// Opens the file if it is not open. Throws SettingsError, as does every operation below.
  void open();
  [[nodiscard]] bool isOpen() const;

  [[nodiscard]] std::optional<json::Value> get(std::string_view key);

  /// `value` must be a property-list value (see isPropertyList) with UTF-8 strings, at most json::kDeepest
  /// deep; otherwise this throws std::invalid_argument.
  void set(std::string key, json::Value value);
  void remove(std::string_view key);

  /// All stored values.
  [[nodiscard]] json::Dictionary values();

  /// Writes what changed since the last call, all or nothing; does not touch the disk when nothing changed.
  void synchronize();

  /// The process ends: unsynchronised values are written to disk, as the phone's daemon does, and the next
  /// use reads the file again.
  void close();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

/// Whether the user defaults can store the value: no null at any depth.
bool isPropertyList(const json::Value& value);

}  // namespace quorvantis::device
