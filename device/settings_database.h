// The file of the user defaults: an SQLite database of text rows, locked by one process at a time. A digest
// over all rows distinguishes damage from an older state.
//
// Threads: one at a time.
#pragma once

#include <array>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "base/c_handle.h"
#include "base/sqlite_statement.h"

namespace quorvantis::device {

class SettingsDatabase {
 public:
  using Rows = std::map<std::string, std::string, std::less<>>;
  /// The new text of a row, or nothing to remove it.
  using Changes = std::map<std::string, std::optional<std::string>, std::less<>>;

  /// Opens the file, creating it if it is missing, locks it for this process and reads it completely. If it
  /// throws SettingsError, the file is unchanged.
  explicit SettingsDatabase(std::filesystem::path file);
  /// A database in memory, which lasts as long as this object and leaves nothing behind however the process
  /// ends.
  SettingsDatabase();
  /// Merges the journal into the file and releases the file.
  ~SettingsDatabase();
  SettingsDatabase(const SettingsDatabase&) = delete;
  SettingsDatabase& operator=(const SettingsDatabase&) = delete;

  /// The rows on disk.
  [[nodiscard]] const Rows& rows() const { return rows_; }

  /// Reads the rows again, as opening does. Throws SettingsError.
  void reload();

  /// Writes all or nothing; the changes are on disk when it returns. Throws SettingsError, and rows() is as
  /// before.
  void write(const Changes& changes);

  /// The message for a row that can't be decoded.
  [[nodiscard]] static std::string damaged(const std::filesystem::path& file, std::string_view detail);

 private:
  using Digest = std::array<unsigned char, 32>;
  using Statement = base::SqliteStatement<SettingsDatabase>;
  friend Statement;
  using Connection = base::CHandle<sqlite3, sqlite3_close_v2>;

  void create() const;
  Connection connect(const std::filesystem::path& file, int flags) const;
  void checkHeader() const;
  void takeFile();
  void load();
  void execute(sqlite3* connection, const char* sql) const;
  [[nodiscard]] sqlite3* handle() const { return connection_.get(); }
  [[noreturn]] void fail(int code, const std::string& detail) const;

  const std::filesystem::path file_;
  Connection connection_;
  Rows rows_;
  Digest digest_{};
};

}  // namespace quorvantis::device
