#include "tests/faults/failing_disk.h"

#include <sqlite3.h>

#include <cstdlib>
#include <cstring>
#include <optional>

namespace quorvantis {
namespace {

std::optional<DiskFault> planned;
int operationsLeft = 0;
bool failed = false;

/// A file of the failing disk; the system's file follows it in memory.
struct File {
  sqlite3_file base;
  sqlite3_io_methods methods;
};

sqlite3_file* behind(sqlite3_file* file) {
  return reinterpret_cast<sqlite3_file*>(reinterpret_cast<File*>(file) + 1);
}

bool isDue(bool isSync) {
  if (!planned || isSync != (*planned == DiskFault::sync)) return false;
  if (operationsLeft > 0) --operationsLeft;
  const bool due = operationsLeft == 0 && (!failed || *planned == DiskFault::full);
  failed = failed || due;
  return due;
}

int write(sqlite3_file* file, const void* bytes, int size, sqlite3_int64 at) {
  sqlite3_file* real = behind(file);
  if (!isDue(false)) return real->pMethods->xWrite(real, bytes, size, at);
  if (*planned == DiskFault::shortWrite) real->pMethods->xWrite(real, bytes, size / 2, at);
  return *planned == DiskFault::full ? SQLITE_FULL : SQLITE_IOERR_WRITE;
}

int sync(sqlite3_file* file, int flags) {
  sqlite3_file* real = behind(file);
  return isDue(true) ? SQLITE_IOERR_FSYNC : real->pMethods->xSync(real, flags);
}

/// The system's method, called on the system's file.
template <auto method, class... Arguments>
int pass(sqlite3_file* file, Arguments... arguments) {
  sqlite3_file* real = behind(file);
  return (real->pMethods->*method)(real, arguments...);
}

template <auto method, class... Arguments>
void passVoid(sqlite3_file* file, Arguments... arguments) {
  sqlite3_file* real = behind(file);
  (real->pMethods->*method)(real, arguments...);
}

sqlite3_vfs& systemDisk() {
  static sqlite3_vfs& disk = *sqlite3_vfs_find(nullptr);
  return disk;
}

int open(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* flagsOut) {
  std::memset(file, 0, sizeof(File));
  sqlite3_file* real = behind(file);
  const int code = systemDisk().xOpen(&systemDisk(), name, real, flags, flagsOut);
  if (real->pMethods == nullptr) return code;
  using Methods = sqlite3_io_methods;
  auto& methods = reinterpret_cast<File*>(file)->methods;
  methods = {
      .iVersion = real->pMethods->iVersion < 2 ? 1 : 2,
      .xClose = pass<&Methods::xClose>,
      .xRead = pass<&Methods::xRead, void*, int, sqlite3_int64>,
      .xWrite = write,
      .xTruncate = pass<&Methods::xTruncate, sqlite3_int64>,
      .xSync = sync,
      .xFileSize = pass<&Methods::xFileSize, sqlite3_int64*>,
      .xLock = pass<&Methods::xLock, int>,
      .xUnlock = pass<&Methods::xUnlock, int>,
      .xCheckReservedLock = pass<&Methods::xCheckReservedLock, int*>,
      .xFileControl = pass<&Methods::xFileControl, int, void*>,
      .xSectorSize = pass<&Methods::xSectorSize>,
      .xDeviceCharacteristics = pass<&Methods::xDeviceCharacteristics>,
      .xShmMap = pass<&Methods::xShmMap, int, int, int, void volatile**>,
      .xShmLock = pass<&Methods::xShmLock, int, int, int>,
      .xShmBarrier = passVoid<&Methods::xShmBarrier>,
      .xShmUnmap = pass<&Methods::xShmUnmap, int>,
      .xFetch = nullptr,
      .xUnfetch = nullptr,
  };
  file->pMethods = &methods;
  return code;
}

const bool isInstalled = [] {
  static sqlite3_vfs disk = systemDisk();
  disk.zName = "failing";
  disk.szOsFile = static_cast<int>(sizeof(File)) + systemDisk().szOsFile;
  disk.xOpen = open;
  return sqlite3_vfs_register(&disk, 1) == SQLITE_OK;
}();

}  // namespace

void failDisk(DiskFault fault, int operation) {
  if (!isInstalled) std::abort();
  planned = fault;
  operationsLeft = operation;
  failed = false;
}

bool diskHasFailed() {
  return failed;
}

void mendDisk() {
  planned.reset();
}

}  // namespace quorvantis
