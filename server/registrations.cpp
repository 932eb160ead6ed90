#include "server/registrations.h"

#include <sqlite3.h>

#include <chrono>
#include <utility>

#include "server/server_error.h"

namespace quorvantis::server {
namespace {

constexpr int kBusyMilliseconds = 5000;

constexpr const char* kSchema =
    "CREATE TABLE IF NOT EXISTS registrations ("
    "  token TEXT PRIMARY KEY NOT NULL,"
    "  app TEXT NOT NULL, device TEXT NOT NULL, library TEXT NOT NULL, geo TEXT NOT NULL,"
    "  registered_at INTEGER NOT NULL, updated_at INTEGER NOT NULL) WITHOUT ROWID";

std::int64_t now() {
  const auto since = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::seconds>(since).count();
}

}  // namespace

struct Registrations::Database {
  explicit Database(std::string theFile) : file(std::move(theFile)) {
    const int opened =
        sqlite3_open_v2(file.empty() ? ":memory:" : file.c_str(), &handle,
                        SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
    try {
      require(opened == SQLITE_OK);
      sqlite3_busy_timeout(handle, kBusyMilliseconds);
      run(kSchema);
    } catch (...) {
      sqlite3_close(handle);
      throw;
    }
  }
  ~Database() { sqlite3_close(handle); }
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  void require(bool done) const {
    if (done) return;
    const std::string name = file.empty() ? "the registrations" : "the registrations in " + file;
    throw ServerError(name + " can't be used: " + sqlite3_errmsg(handle));
  }
  void run(const char* sql) const {
    require(sqlite3_exec(handle, sql, nullptr, nullptr, nullptr) == SQLITE_OK);
  }

  const std::string file;
  sqlite3* handle = nullptr;
};

namespace {

/// One statement, from its preparation to its end.
template <class Database>
class Statement {
 public:
  Statement(const Database& database, const char* sql) : database_(database) {
    database_.require(sqlite3_prepare_v2(database_.handle, sql, -1, &handle_, nullptr) == SQLITE_OK);
  }
  ~Statement() { sqlite3_finalize(handle_); }
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  Statement& bind(const std::string& text) {
    database_.require(sqlite3_bind_text64(handle_, ++bound_, text.data(), text.size(), SQLITE_STATIC,
                                          SQLITE_UTF8) == SQLITE_OK);
    return *this;
  }
  Statement& bind(std::int64_t number) {
    database_.require(sqlite3_bind_int64(handle_, ++bound_, number) == SQLITE_OK);
    return *this;
  }
  /// Whether there is a row.
  bool step() {
    const int result = sqlite3_step(handle_);
    database_.require(result == SQLITE_ROW || result == SQLITE_DONE);
    return result == SQLITE_ROW;
  }
  [[nodiscard]] std::string text(int column) const {
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(handle_, column));
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(handle_, column));
    return bytes == nullptr ? std::string() : std::string(bytes, size);
  }
  [[nodiscard]] std::int64_t number(int column) const { return sqlite3_column_int64(handle_, column); }

 private:
  const Database& database_;
  sqlite3_stmt* handle_ = nullptr;
  int bound_ = 0;
};

/// Undone unless it is committed.
template <class Database>
class Transaction {
 public:
  explicit Transaction(const Database& database) : database_(database) { database_.run("BEGIN IMMEDIATE"); }
  ~Transaction() {
    if (!committed_) sqlite3_exec(database_.handle, "ROLLBACK", nullptr, nullptr, nullptr);
  }
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  void commit() {
    database_.run("COMMIT");
    committed_ = true;
  }

 private:
  const Database& database_;
  bool committed_ = false;
};

template <class Database>
void put(const Database& database, const std::string& token, const PushRequest& request,
         std::int64_t registeredAt) {
  Statement statement(database,
                      "INSERT INTO registrations VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7) "
                      "ON CONFLICT (token) DO UPDATE SET app = ?2, device = ?3, library = ?4, geo = ?5, "
                      "updated_at = ?7");
  statement.bind(token).bind(request.app).bind(request.device).bind(request.library).bind(request.geo);
  statement.bind(registeredAt).bind(now());
  statement.step();
}

}  // namespace

Registrations::Registrations(const std::string& file) : database_(std::make_unique<Database>(file)) {}
Registrations::~Registrations() = default;

void Registrations::add(const PushRequest& request) {
  put(*database_, request.token, request, now());
}

bool Registrations::change(const PushRequest& request) {
  Transaction transaction(*database_);
  const auto old = find(request.oldToken);
  if (!old) return false;
  Statement(*database_, "DELETE FROM registrations WHERE token = ?").bind(request.oldToken).step();
  put(*database_, request.newToken, request, old->registeredAt);
  transaction.commit();
  return true;
}

std::optional<Registration> Registrations::find(const std::string& token) const {
  Statement statement(*database_, "SELECT * FROM registrations WHERE token = ?");
  if (!statement.bind(token).step()) return std::nullopt;
  return Registration{statement.text(0), statement.text(1),   statement.text(2),  statement.text(3),
                      statement.text(4), statement.number(5), statement.number(6)};
}

}  // namespace quorvantis::server
