// Rows committed to a bare SQLite database, as durable as the device's own settings. Main thread.
#pragma once

#include <filesystem>
#include <map>
#include <string>

struct sqlite3;
struct sqlite3_stmt;

namespace quorvantis::bench {

class PlainSettings {
 public:
  explicit PlainSettings(const std::filesystem::path& file);
  ~PlainSettings();
  PlainSettings(const PlainSettings&) = delete;
  PlainSettings& operator=(const PlainSettings&) = delete;

  /// In one transaction; on disk when it returns.
  void commit(const std::map<std::string, std::string>& rows);

 private:
  void execute(const char* sql);

  sqlite3* connection_ = nullptr;
  sqlite3_stmt* put_ = nullptr;
};

}  // namespace quorvantis::bench
