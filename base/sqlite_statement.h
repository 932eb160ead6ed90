// One SQLite statement, from its preparation to its end. Threads: as the connection's.
#pragma once

#include <sqlite3.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace quorvantis::base {

/// `Database` has `handle()`, the open connection, and `fail(int code, const std::string& detail)`, which
/// throws what its users expect. It must outlive the statement, and so must bound values.
template <class Database>
class SqliteStatement {
 public:
  SqliteStatement(const Database& database, const char* sql) : database_(database) {
    check(sqlite3_prepare_v2(database_.handle(), sql, -1, &statement_, nullptr));
  }
  ~SqliteStatement() { sqlite3_finalize(statement_); }
  SqliteStatement(const SqliteStatement&) = delete;
  SqliteStatement& operator=(const SqliteStatement&) = delete;

  /// Binds the next parameter.
  SqliteStatement& bind(std::string_view text) {
    check(sqlite3_bind_text64(statement_, ++bound_, text.data(), text.size(), SQLITE_STATIC, SQLITE_UTF8));
    return *this;
  }
  SqliteStatement& bind(std::int64_t number) {
    check(sqlite3_bind_int64(statement_, ++bound_, number));
    return *this;
  }

  /// Whether there is a row.
  bool step() {
    const int code = sqlite3_step(statement_);
    if (code != SQLITE_ROW && code != SQLITE_DONE) check(code);
    return code == SQLITE_ROW;
  }

  /// Runs the statement, and resets it to be bound and run again.
  void run() {
    step();
    sqlite3_reset(statement_);
    bound_ = 0;
  }

  [[nodiscard]] std::string text(int column) const {
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
    if (bytes == nullptr) return {};
    return {bytes, static_cast<std::size_t>(sqlite3_column_bytes(statement_, column))};
  }
  [[nodiscard]] std::int64_t number(int column) const { return sqlite3_column_int64(statement_, column); }

 private:
  void check(int code) const {
    if (code != SQLITE_OK) database_.fail(code, sqlite3_errmsg(database_.handle()));
  }

  const Database& database_;
  sqlite3_stmt* statement_ = nullptr;
  int bound_ = 0;
};

}  // namespace quorvantis::base
