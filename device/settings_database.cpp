#include "device/settings_database.h"

#include <fcntl.h>
#include <openssl/evp.h>
#include <sqlite3.h>
#include <stdlib.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <new>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "base/hexadecimal.h"
#include "device/settings.h"

namespace quorvantis::device {
namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t kApplication = 0x51505553;
constexpr std::uint32_t kFormat = 1;
constexpr std::size_t kHeaderSize = 100;
constexpr std::string_view kMagic("SQLite format 3\0", 16);

constexpr const char* kMetaTable = "CREATE TABLE meta (name TEXT PRIMARY KEY, value TEXT NOT NULL) STRICT";
constexpr const char* kSettingsTable =
    "CREATE TABLE settings (key TEXT PRIMARY KEY, value TEXT NOT NULL) STRICT, WITHOUT ROWID";

std::string complain(const fs::path& file, std::string_view what, std::string_view remedy) {
  return "the settings file " + file.string() + " " + std::string(what) + "; " + std::string(remedy);
}

std::string unwritable(const fs::path& file, std::string_view detail) {
  return complain(
      file, "can't be opened for writing (" + std::string(detail) + ")",
      "make sure that its folder exists and that this user can write to both, or choose another file");
}

fs::path journalOf(fs::path file) {
  return file += "-wal";
}

std::array<unsigned char, 32> sha256(std::string_view key, std::string_view value) {
  // With the length, a byte that moves from the key to the value changes the digest.
  const std::string bytes = std::to_string(key.size()) + ":" + std::string(key) + std::string(value);
  std::array<unsigned char, 32> digest;
  if (EVP_Digest(bytes.data(), bytes.size(), digest.data(), nullptr, EVP_sha256(), nullptr) != 1) {
    throw std::runtime_error("SHA-256 failed");
  }
  return digest;
}

/// Adds the row to the digest of all rows, or removes it.
void fold(std::array<unsigned char, 32>& digest, std::string_view key, std::string_view value) {
  const auto row = sha256(key, value);
  for (std::size_t i = 0; i < digest.size(); ++i) digest[i] ^= row[i];
}

std::string text(const std::array<unsigned char, 32>& digest) {
  return base::hexadecimal({reinterpret_cast<const char*>(digest.data()), digest.size()});
}

/// The statements that create an empty database.
std::string schema() {
  return "BEGIN; PRAGMA application_id = " + std::to_string(kApplication) +
         "; PRAGMA user_version = " + std::to_string(kFormat) + "; " + kMetaTable + "; " + kSettingsTable +
         "; INSERT INTO meta VALUES ('digest', '" + text({}) + "'); COMMIT";
}

std::uint32_t bigEndian(const unsigned char* bytes) {
  return std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 | std::uint32_t{bytes[2]} << 8 |
         bytes[3];
}

void syncFolder(const fs::path& folder) {
  const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  ::fsync(descriptor);
  ::close(descriptor);
}

}  // namespace

SettingsDatabase::SettingsDatabase(fs::path file) : file_(std::move(file)) {
  std::error_code error;
  const fs::file_status status = fs::status(file_, error);
  if (status.type() == fs::file_type::not_found) {
    create();
  } else if (error) {
    throw SettingsError(unwritable(file_, error.message()));
  } else if (!fs::is_regular_file(status)) {
    throw SettingsError(complain(file_, "is not a regular file", "choose another file"));
  }
  connection_ = connect(file_, SQLITE_OPEN_READWRITE);
  checkHeader();
  takeFile();
}

SettingsDatabase::SettingsDatabase() : file_(":memory:") {
  connection_ = connect(file_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
  execute(connection_.get(), schema().c_str());
}

SettingsDatabase::~SettingsDatabase() = default;

void SettingsDatabase::reload() {
  rows_.clear();
  digest_ = {};
  load();
}

std::string SettingsDatabase::damaged(const fs::path& file, std::string_view detail) {
  return complain(file, "is damaged (" + std::string(detail) + ")",
                  "restore it from a copy, or remove it and its -wal to start without settings");
}

/// The file gets its name only when it is complete, so that a process killed here leaves no file that is
/// refused later.
void SettingsDatabase::create() const {
  std::error_code error;
  if (fs::exists(journalOf(file_), error)) {
    throw SettingsError(complain(file_, "is missing while its -wal is there",
                                 "restore it, or remove the -wal to start without settings"));
  }

  std::string name = file_.string() + ".new-XXXXXX";
  const int descriptor = ::mkstemp(name.data());
  if (descriptor < 0) throw SettingsError(unwritable(file_, std::generic_category().message(errno)));
  ::close(descriptor);
  const fs::path draft = name;
  const auto removeDraft = [&] {
    fs::remove(draft, error);
    fs::remove(journalOf(draft), error);
  };

  try {
    const Connection connection = connect(draft, SQLITE_OPEN_READWRITE);
    execute(connection.get(),
            "PRAGMA locking_mode = EXCLUSIVE; PRAGMA journal_mode = WAL; PRAGMA synchronous = FULL; PRAGMA "
            "fullfsync = ON");
    execute(connection.get(), (schema() + "; PRAGMA wal_checkpoint(TRUNCATE)").c_str());
  } catch (...) {
    removeDraft();
    throw;
  }

  // If another process was faster, its file is used.
  const int linked = ::link(draft.c_str(), file_.c_str());
  const int reason = errno;
  removeDraft();
  if (linked != 0 && reason != EEXIST) {
    throw SettingsError(unwritable(file_, std::generic_category().message(reason)));
  }
  syncFolder(file_.parent_path());
}

SettingsDatabase::Connection SettingsDatabase::connect(const fs::path& file, int flags) const {
  sqlite3* opened = nullptr;
  const int code =
      sqlite3_open_v2(file.c_str(), &opened, flags | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
  Connection connection(opened);
  if (code != SQLITE_OK) fail(code, opened != nullptr ? sqlite3_errmsg(opened) : sqlite3_errstr(code));
  return connection;
}

/// Checks the file's first bytes before SQLite does, which would recover or convert a file that is not ours.
/// It reads through SQLite's own descriptor: closing another one would drop this process's locks.
void SettingsDatabase::checkHeader() const {
  sqlite3_file* handle = nullptr;
  sqlite3_file_control(connection_.get(), "main", SQLITE_FCNTL_FILE_POINTER, &handle);
  sqlite3_int64 size = 0;
  if (const int code = handle->pMethods->xFileSize(handle, &size); code != SQLITE_OK)
    fail(code, sqlite3_errstr(code));
  if (size == 0) throw SettingsError(damaged(file_, "it is empty"));

  std::array<unsigned char, kHeaderSize> header{};
  const int code = handle->pMethods->xRead(handle, header.data(), static_cast<int>(header.size()), 0);
  if (code != SQLITE_OK && code != SQLITE_IOERR_SHORT_READ) fail(code, sqlite3_errstr(code));
  if (std::string_view(reinterpret_cast<const char*>(header.data()), kMagic.size()) != kMagic) {
    throw SettingsError(complain(file_, "is damaged, or is not a settings file",
                                 "restore it from a copy or choose another file"));
  }
  if (bigEndian(&header[68]) != kApplication) {
    throw SettingsError(complain(file_, "is another program's database", "choose another file"));
  }
  const std::uint32_t format = bigEndian(&header[60]);
  if (format > kFormat) {
    throw SettingsError(complain(file_, "has a newer format, " + std::to_string(format),
                                 "use a newer version of this program"));
  }

  const auto usesJournal = [](unsigned char version) { return version == 2; };
  std::error_code error;
  const bool journalWaits = fs::exists(journalOf(file_), error) && fs::file_size(journalOf(file_), error) > 0;
  const bool sound = format == kFormat && header[18] >= 1 && header[18] <= 2 && header[19] == header[18] &&
                     (usesJournal(header[18]) || !journalWaits);
  if (!sound) throw SettingsError(damaged(file_, "its header contradicts itself"));
  if (sqlite3_db_readonly(connection_.get(), "main") == 1)
    throw SettingsError(unwritable(file_, "it is read-only"));
}

/// Locks the file before anything is read, and keeps it.
void SettingsDatabase::takeFile() {
  sqlite3* const connection = connection_.get();
  const fs::path journal = journalOf(file_);
  std::error_code error;
  const bool hadJournal = fs::exists(journal, error);
  // The journal is kept until the file has been checked.
  sqlite3_db_config(connection, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
  sqlite3_db_config(connection, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
  execute(connection, "PRAGMA locking_mode = EXCLUSIVE; PRAGMA temp_store = MEMORY; BEGIN EXCLUSIVE");
  try {
    load();
    execute(connection,
            "COMMIT; PRAGMA journal_mode = WAL; PRAGMA synchronous = FULL; PRAGMA fullfsync = ON");
  } catch (...) {
    if (!hadJournal && fs::file_size(journal, error) == 0 && !error) fs::remove(journal, error);
    throw;
  }
  sqlite3_db_config(connection, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 0, nullptr);
}

void SettingsDatabase::load() {
  Statement check(*this, "PRAGMA integrity_check(1)");
  std::string verdict = check.step() ? check.text(0) : "unchecked";
  std::replace(verdict.begin(), verdict.end(), '\n', ' ');
  if (verdict != "ok") throw SettingsError(damaged(file_, verdict));

  std::string schema;
  for (Statement tables(*this, "SELECT sql FROM sqlite_schema WHERE sql IS NOT NULL ORDER BY name");
       tables.step();) {
    schema += tables.text(0) + ";";
  }
  if (schema != std::string(kMetaTable) + ";" + kSettingsTable + ";") {
    throw SettingsError(damaged(file_, "its tables are not those of a settings file"));
  }

  for (Statement row(*this, "SELECT key, value FROM settings"); row.step();) {
    const auto [entry, isNew] = rows_.emplace(row.text(0), row.text(1));
    if (!isNew) throw SettingsError(damaged(file_, "it contains a key twice"));
    fold(digest_, entry->first, entry->second);
  }
  Statement stored(*this, "SELECT value FROM meta WHERE name = 'digest'");
  if (!stored.step() || stored.text(0) != text(digest_)) {
    throw SettingsError(damaged(file_, "its content does not match its digest"));
  }
}

void SettingsDatabase::write(const Changes& changes) {
  sqlite3* const connection = connection_.get();
  Digest digest = digest_;
  execute(connection, "BEGIN IMMEDIATE");
  try {
    Statement put(*this, "INSERT INTO settings VALUES (?1, ?2) ON CONFLICT (key) DO UPDATE SET value = ?2");
    Statement erase(*this, "DELETE FROM settings WHERE key = ?1");
    for (const auto& [key, value] : changes) {
      if (const auto old = rows_.find(key); old != rows_.end()) fold(digest, key, old->second);
      Statement& statement = value ? put : erase;
      statement.bind(key);
      if (value) {
        fold(digest, key, *value);
        statement.bind(*value);
      }
      statement.run();
    }
    Statement seal(*this, "UPDATE meta SET value = ?1 WHERE name = 'digest'");
    const std::string sealed = text(digest);
    seal.bind(sealed).run();
    execute(connection, "COMMIT");
  } catch (...) {
    // Some failures have rolled back already.
    sqlite3_exec(connection, "ROLLBACK", nullptr, nullptr, nullptr);
    throw;
  }

  digest_ = digest;
  for (const auto& [key, value] : changes) {
    if (value) {
      rows_.insert_or_assign(key, *value);
    } else {
      rows_.erase(key);
    }
  }
}

void SettingsDatabase::execute(sqlite3* connection, const char* sql) const {
  const int code = sqlite3_exec(connection, sql, nullptr, nullptr, nullptr);
  if (code != SQLITE_OK) fail(code, sqlite3_errmsg(connection));
}

void SettingsDatabase::fail(int code, const std::string& detail) const {
  switch (code & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      throw SettingsError(
          complain(file_, "is in use by another process", "end that process or choose another file"));
    case SQLITE_READONLY:
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
    case SQLITE_AUTH:
      throw SettingsError(unwritable(file_, detail));
    case SQLITE_FULL:
      throw SettingsError(
          complain(file_, "can't be written: the disk is full", "free some space and synchronise again"));
    case SQLITE_IOERR:
      throw SettingsError(complain(file_, "can't be read or written (" + detail + ")",
                                   "check its disk and the limits on the size of files, and try again"));
    case SQLITE_NOMEM:
      throw std::bad_alloc();
    default:
      throw SettingsError(damaged(file_, detail));
  }
}

}  // namespace quorvantis::device
