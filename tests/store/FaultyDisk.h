#pragma once

#include <sqlite3.h>

namespace talnik::test {

/// A disk that fails at a word: while one lives, every file of SQLite lies on it.
class FaultyDisk {
 public:
  enum class Fault { None, Full, ReadOnlyFile, ReadOnlyFolder, WriteError, SyncError };

  FaultyDisk();
  ~FaultyDisk();
  FaultyDisk(const FaultyDisk&) = delete;
  FaultyDisk& operator=(const FaultyDisk&) = delete;

  Fault fault = Fault::None;
  int writesLeft = 0;  ///< before a full disk is full or writing fails
  int slept = 0;       ///< microseconds that were waited for another program; no time passes

 private:
  sqlite3_vfs* real_;
  sqlite3_vfs vfs_{};
};

}  // namespace talnik::test
