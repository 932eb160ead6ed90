#include "bench/plain_settings.h"

#include <sqlite3.h>

#include <stdexcept>

namespace quorvantis::bench {

PlainSettings::PlainSettings(const std::filesystem::path& file) {
  if (sqlite3_open(file.c_str(), &connection_) != SQLITE_OK) throw std::runtime_error("SQLite does not open");
  execute(
      "PRAGMA locking_mode = EXCLUSIVE; PRAGMA journal_mode = WAL; PRAGMA synchronous = FULL;"
      "CREATE TABLE settings (key TEXT PRIMARY KEY, value TEXT NOT NULL) STRICT, WITHOUT ROWID");
  sqlite3_prepare_v2(connection_,
                     "INSERT INTO settings VALUES (?1, ?2) ON CONFLICT (key) DO UPDATE SET value = ?2", -1,
                     &put_, nullptr);
}

PlainSettings::~PlainSettings() {
  sqlite3_finalize(put_);
  sqlite3_close(connection_);
}

void PlainSettings::commit(const std::map<std::string, std::string>& rows) {
  execute("BEGIN");
  for (const auto& [key, value] : rows) {
    sqlite3_bind_text(put_, 1, key.data(), static_cast<int>(key.size()), SQLITE_STATIC);
    sqlite3_bind_text(put_, 2, value.data(), static_cast<int>(value.size()), SQLITE_STATIC);
    if (sqlite3_step(put_) != SQLITE_DONE) throw std::runtime_error("SQLite does not write");
    sqlite3_reset(put_);
  }
  execute("COMMIT");
}

void PlainSettings::execute(const char* sql) {
  if (sqlite3_exec(connection_, sql, nullptr, nullptr, nullptr) != SQLITE_OK) {
    throw std::runtime_error(sqlite3_errmsg(connection_));
  }
}

}  // namespace quorvantis::bench
