// A disk for SQLite that fails when it is told to. It stands in front of the system's own in each program
// that it is linked into. Main thread.
#pragma once

namespace quorvantis {

enum class DiskFault {
  write,       ///< one write fails, nothing of it is on disk
  full,        ///< from there on all writes fail for want of space
  shortWrite,  ///< one write gets half of its bytes to the disk
  sync,        ///< one synchronisation with the disk fails
};

/// The fault comes with the given operation of its kind from now on, counted from 1.
void failDisk(DiskFault fault, int operation);
/// Whether the fault has come.
bool diskHasFailed();
void mendDisk();

}  // namespace quorvantis
