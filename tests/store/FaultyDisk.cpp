#include "store/FaultyDisk.h"

#include <map>

namespace talnik::test {
namespace {

using Fault = FaultyDisk::Fault;

FaultyDisk* disk = nullptr;
const sqlite3_io_methods* realMethods = nullptr;

int Write(sqlite3_file* file, const void* data, int size, sqlite3_int64 offset) {
  if ((disk->fault == Fault::Full || disk->fault == Fault::WriteError) && disk->writesLeft-- <= 0) {
    return disk->fault == Fault::Full ? SQLITE_FULL : SQLITE_IOERR_WRITE;
  }
  return realMethods->xWrite(file, data, size, offset);
}

int Sync(sqlite3_file* file, int flags) {
  return disk->fault == Fault::SyncError ? SQLITE_IOERR_FSYNC : realMethods->xSync(file, flags);
}

int Open(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
  if (disk->fault == Fault::ReadOnlyFolder && (flags & SQLITE_OPEN_MAIN_JOURNAL)) return SQLITE_CANTOPEN;
  if (disk->fault == Fault::ReadOnlyFile && (flags & SQLITE_OPEN_READWRITE)) {
    flags = (flags & ~SQLITE_OPEN_READWRITE) | SQLITE_OPEN_READONLY;
  }
  sqlite3_vfs* real = sqlite3_vfs_find("unix");
  const int result = real->xOpen(real, name, file, flags, outFlags);
  if (result != SQLITE_OK) return result;
  // All files share their ways of writing; only the locks differ, and of these the copy keeps each file's own.
  static std::map<const sqlite3_io_methods*, sqlite3_io_methods> hooked;
  realMethods = file->pMethods;
  sqlite3_io_methods& methods = hooked.emplace(file->pMethods, *file->pMethods).first->second;
  methods.xWrite = Write;
  methods.xSync = Sync;
  file->pMethods = &methods;
  return SQLITE_OK;
}

}  // namespace

FaultyDisk::FaultyDisk() : real_(sqlite3_vfs_find("unix")), vfs_(*real_) {
  disk = this;
  vfs_.zName = "faulty";
  vfs_.xOpen = Open;
  vfs_.xSleep = [](sqlite3_vfs*, int microseconds) {
    disk->slept += microseconds;
    return microseconds;
  };
  sqlite3_vfs_register(&vfs_, 1);
}

FaultyDisk::~FaultyDisk() {
  sqlite3_vfs_unregister(&vfs_);
  sqlite3_vfs_register(real_, 1);
}

}  // namespace talnik::test
