#include "server/registrations.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdint>
#include <string>
#include <utility>

#include "base/c_handle.h"
#include "base/sqlite_statement.h"
#include "server/server_error.h"
#include "server/socket.h"

namespace quorvantis::server {
namespace {

constexpr int kBusyMilliseconds = 5000;
constexpr std::int64_t kApplication = 0x51505352;  // in the file's header

constexpr const char* kSchema =
    "CREATE TABLE registrations ("
    "  token TEXT PRIMARY KEY NOT NULL,"
    "  app TEXT NOT NULL, device TEXT NOT NULL, library TEXT NOT NULL, geo TEXT NOT NULL,"
    "  registered_at INTEGER NOT NULL, updated_at INTEGER NOT NULL) WITHOUT ROWID";

std::int64_t now() {
  const auto since = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::seconds>(since).count();
}

/// SQLite creates world-readable files.
void makePrivate(const std::string& file) {
  const int made = ::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
  if (made >= 0) ::close(made);
}

}  // namespace

/// The open file.
class DatabaseFile {
 public:
  explicit DatabaseFile(std::string file) : file_(std::move(file)), lock_(takeFile()) {
    sqlite3* opened = nullptr;
    const int code =
        sqlite3_open_v2(file_.empty() ? ":memory:" : file_.c_str(), &opened,
                        SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
    handle_.reset(opened);
    require(code == SQLITE_OK);
    sqlite3_busy_timeout(opened, kBusyMilliseconds);
  }
  DatabaseFile(const DatabaseFile&) = delete;
  DatabaseFile& operator=(const DatabaseFile&) = delete;

  [[noreturn]] void refuse(const std::string& why) const {
    throw ServerError((file_.empty() ? "the registrations" : "the registrations in " + file_) +
                      " can't be used: " + why);
  }
  [[noreturn]] void fail(int /*code*/, const std::string& detail) const { refuse(detail); }
  void require(bool done) const {
    if (!done) refuse(sqlite3_errmsg(handle()));
  }
  void run(const std::string& sql) const {
    require(sqlite3_exec(handle(), sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK);
  }
  [[nodiscard]] sqlite3* handle() const { return handle_.get(); }

 private:
  /// Other programs may read the file while this server uses it, but no other server may.
  [[nodiscard]] Socket takeFile() const {
    if (file_.empty()) return Socket(-1);
    makePrivate(file_);
    Socket lock(::open(file_.c_str(), O_RDONLY | O_CLOEXEC));
    if (lock.get() >= 0 && ::flock(lock.get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
      refuse("another server is using the file; stop it or choose another file");
    }
    return lock;
  }

  const std::string file_;
  const Socket lock_;  // outlives SQLite's handle: closing any descriptor of the file drops SQLite's locks
  base::CHandle<sqlite3, sqlite3_close> handle_;
};

namespace {

using Statement = base::SqliteStatement<DatabaseFile>;

/// Rolled back unless it is committed.
class Transaction {
 public:
  explicit Transaction(const DatabaseFile& database) : database_(database) {
    database_.run("BEGIN IMMEDIATE");
  }
  ~Transaction() {
    if (!committed_) sqlite3_exec(database_.handle(), "ROLLBACK", nullptr, nullptr, nullptr);
  }
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  void commit() {
    database_.run("COMMIT");
    committed_ = true;
  }

 private:
  const DatabaseFile& database_;
  bool committed_ = false;
};

std::int64_t numberOf(const DatabaseFile& database, const char* query) {
  Statement statement(database, query);
  statement.step();
  return statement.number(0);
}

/// In a transaction, which fails at once if the file can't be written.
void prepare(const DatabaseFile& database) {
  Transaction transaction(database);
  if (numberOf(database, "PRAGMA application_id") == kApplication) {
    Statement(database,
              "SELECT token, app, device, library, geo, registered_at, updated_at FROM registrations");
  } else {
    if (numberOf(database, "SELECT count(*) FROM sqlite_schema") != 0) {
      database.refuse("the file is another program's database; choose another file");
    }
    database.run("PRAGMA application_id = " + std::to_string(kApplication));
    database.run(kSchema);
  }
  transaction.commit();
}

void put(const DatabaseFile& database, const std::string& token, const PushRequest& request,
         std::int64_t registeredAt) {
  Statement statement(database,
                      "INSERT INTO registrations VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7) "
                      "ON CONFLICT (token) DO UPDATE SET app = ?2, device = ?3, library = ?4, geo = ?5, "
                      "registered_at = min(registered_at, ?6), updated_at = ?7");
  statement.bind(token).bind(request.app).bind(request.device).bind(request.library).bind(request.geo);
  statement.bind(registeredAt).bind(now());
  statement.step();
}

}  // namespace

struct Registrations::Database : DatabaseFile {
  using DatabaseFile::DatabaseFile;
};

Registrations::Registrations(const std::string& file) : database_(std::make_unique<Database>(file)) {
  prepare(*database_);
}
Registrations::~Registrations() = default;

void Registrations::add(const PushRequest& request) {
  put(*database_, request.token, request, now());
}

bool Registrations::change(const PushRequest& request) {
  Transaction transaction(*database_);
  Statement old(*database_, "DELETE FROM registrations WHERE token = ? RETURNING registered_at");
  if (!old.bind(request.oldToken).step()) return false;
  const std::int64_t registeredAt = old.number(0);
  old.step();
  put(*database_, request.newToken, request, registeredAt);
  transaction.commit();
  return true;
}

}  // namespace quorvantis::server
