// A disk for SQLite that fails on request. It wraps the system's own in each program that links it. Main
// thread.
#pragma once

namespace quorvantis {

enum class DiskFault {
  write,       ///< one write fails, and writes nothing
  full,        ///< from then on all writes fail because the disk is full
  shortWrite,  ///< one write only writes half of its bytes
  sync,        ///< one synchronisation with the disk fails
};

/// The fault occurs in the n-th operation of its kind from now on, counted from 1.
void failDisk(DiskFault fault, int operation);
/// Whether the fault has occurred.
bool diskHasFailed();
void mendDisk();

}  // namespace quorvantis
