#include "store/FaultyDisk.h"

#include <new>

namespace talnik::test {
namespace {

/// A file of the real disk behind one whose writing can fail.
struct FaultyFile {
  sqlite3_file base;
  FaultyDisk* disk;
  sqlite3_file* Real() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

FaultyFile& Of(sqlite3_file* file) {
  return *reinterpret_cast<FaultyFile*>(file);
}

template <auto Method, class... Arguments>
int Pass(sqlite3_file* file, Arguments... arguments) {
  sqlite3_file* real = Of(file).Real();
  return (real->pMethods->*Method)(real, arguments...);
}

int Write(sqlite3_file* file, const void* data, int size, sqlite3_int64 offset) {
  FaultyDisk& disk = *Of(file).disk;
  const bool fails = disk.fault == FaultyDisk::Fault::Full || disk.fault == FaultyDisk::Fault::WriteError;
  if (fails && disk.writesLeft-- <= 0) {
    return disk.fault == FaultyDisk::Fault::Full ? SQLITE_FULL : SQLITE_IOERR_WRITE;
  }
  return Pass<&sqlite3_io_methods::xWrite>(file, data, size, offset);
}

int Sync(sqlite3_file* file, int flags) {
  if (Of(file).disk->fault == FaultyDisk::Fault::SyncError) return SQLITE_IOERR_FSYNC;
  return Pass<&sqlite3_io_methods::xSync>(file, flags);
}

const sqlite3_io_methods* Methods() {
  using M = sqlite3_io_methods;
  static M methods = [] {
    M made{};
    made.iVersion = 1;
    made.xClose = [](sqlite3_file* file) { return Pass<&M::xClose>(file); };
    made.xRead = [](sqlite3_file* file, void* data, int size, sqlite3_int64 offset) {
      return Pass<&M::xRead>(file, data, size, offset);
    };
    made.xWrite = Write;
    made.xTruncate = [](sqlite3_file* file, sqlite3_int64 size) { return Pass<&M::xTruncate>(file, size); };
    made.xSync = Sync;
    made.xFileSize = [](sqlite3_file* file, sqlite3_int64* size) { return Pass<&M::xFileSize>(file, size); };
    made.xLock = [](sqlite3_file* file, int level) { return Pass<&M::xLock>(file, level); };
    made.xUnlock = [](sqlite3_file* file, int level) { return Pass<&M::xUnlock>(file, level); };
    made.xCheckReservedLock = [](sqlite3_file* file, int* result) {
      return Pass<&M::xCheckReservedLock>(file, result);
    };
    made.xFileControl = [](sqlite3_file* file, int what, void* argument) {
      return Pass<&M::xFileControl>(file, what, argument);
    };
    made.xSectorSize = [](sqlite3_file* file) { return Pass<&M::xSectorSize>(file); };
    made.xDeviceCharacteristics = [](sqlite3_file* file) { return Pass<&M::xDeviceCharacteristics>(file); };
    return made;
  }();
  return &methods;
}

int Open(sqlite3_vfs* vfs, const char* name, sqlite3_file* file, int flags, int* outFlags) {
  auto& disk = *static_cast<FaultyDisk*>(vfs->pAppData);
  FaultyFile& made = *new (file) FaultyFile{{nullptr}, &disk};
  if (disk.fault == FaultyDisk::Fault::ReadOnlyFolder && (flags & SQLITE_OPEN_MAIN_JOURNAL)) return SQLITE_CANTOPEN;
  if (disk.fault == FaultyDisk::Fault::ReadOnlyFile && (flags & SQLITE_OPEN_READWRITE)) {
    if (flags & SQLITE_OPEN_CREATE) return SQLITE_CANTOPEN;
    flags = (flags & ~SQLITE_OPEN_READWRITE) | SQLITE_OPEN_READONLY;
  }
  sqlite3_vfs* real = sqlite3_vfs_find("unix");
  const int result = real->xOpen(real, name, made.Real(), flags, outFlags);
  if (result == SQLITE_OK) made.base.pMethods = Methods();
  return result;
}

}  // namespace

FaultyDisk::FaultyDisk() : real_(sqlite3_vfs_find("unix")), vfs_(*real_) {
  vfs_.szOsFile = static_cast<int>(sizeof(FaultyFile)) + real_->szOsFile;
  vfs_.zName = "faulty";
  vfs_.pAppData = this;
  vfs_.xOpen = Open;
  vfs_.xSleep = [](sqlite3_vfs* vfs, int microseconds) {
    static_cast<FaultyDisk*>(vfs->pAppData)->slept += microseconds;
    return microseconds;
  };
  sqlite3_vfs_register(&vfs_, 1);
}

FaultyDisk::~FaultyDisk() {
  sqlite3_vfs_unregister(&vfs_);
  sqlite3_vfs_register(real_, 1);
}

}  // namespace talnik::test
