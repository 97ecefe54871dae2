#include "Power.h"

#include <QDir>
#include <QFile>
#include <QHash>

#include <dlfcn.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace talnik::soak {

namespace {

/// What a cut of the power leaves of the files that were written to since they were last brought to the disk. The file
/// system is taken for one that keeps the order of what is done to its folders.
struct Disk {
  QHash<ino_t, QByteArray> safe;
  QString folder;
  int changesLeft = -1;  ///< negative: the power does not fail
};

Disk& TheDisk() {
  static Disk disk;
  return disk;
}

std::optional<ino_t> FileOf(int handle) {
  struct stat info {};
  if (::fstat(handle, &info) != 0 || !S_ISREG(info.st_mode)) return {};
  return info.st_ino;
}

QByteArray BytesOf(int handle) {
  QFile file(u"/proc/self/fd/"_qs + QString::number(handle));
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

template <typename Function>
Function* Real(const char* name) {
  return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

/// True when the power fails within this change.
bool FailsNow() {
  Disk& disk = TheDisk();
  return disk.changesLeft >= 0 && disk.changesLeft-- == 0;
}

void EndIfItFails() {
  if (FailsNow()) FailPower();
}

/// A write as the process does it; half of it when the power fails.
template <typename Write>
ssize_t Written(int handle, std::size_t size, const Write& write) {
  Disk& disk = TheDisk();
  const auto file = disk.folder.isEmpty() ? std::nullopt : FileOf(handle);
  if (!file) return write(size);
  if (!disk.safe.contains(*file)) disk.safe.insert(*file, BytesOf(handle));
  if (!FailsNow()) return write(size);
  write(size / 2);
  FailPower();
}

int Synced(int handle, int result) {
  const auto file = FileOf(handle);
  if (file && result == 0) TheDisk().safe.remove(*file);
  return result;
}

}  // namespace

void WatchDisk(const QString& folder) {
  TheDisk().folder = folder;
}

void FailPowerAfter(int changes) {
  TheDisk().changesLeft = changes;
}

void FailPower() {
  const Disk disk = std::exchange(TheDisk(), {});
  for (const QFileInfo& info : QDir(disk.folder).entryInfoList(QDir::Files | QDir::Hidden)) {
    struct stat status {};
    if (::stat(QFile::encodeName(info.filePath()).constData(), &status) != 0) continue;
    const auto kept = disk.safe.constFind(status.st_ino);
    if (kept == disk.safe.constEnd()) continue;
    QFile file(info.filePath());
    if (!file.open(QIODevice::WriteOnly) || file.write(*kept) != kept->size()) std::abort();
  }
  ::raise(SIGKILL);
  std::abort();
}

}  // namespace talnik::soak

// The libraries of the program call these in place of those of the system.

using namespace talnik::soak;

extern "C" {

ssize_t write(int handle, const void* bytes, std::size_t size) {
  static auto* const real = Real<ssize_t(int, const void*, std::size_t)>("write");
  return Written(handle, size, [&](std::size_t part) { return real(handle, bytes, part); });
}

ssize_t pwrite64(int handle, const void* bytes, std::size_t size, off64_t place) {
  static auto* const real = Real<ssize_t(int, const void*, std::size_t, off64_t)>("pwrite64");
  return Written(handle, size, [&](std::size_t part) { return real(handle, bytes, part, place); });
}

int fsync(int handle) {
  static auto* const real = Real<int(int)>("fsync");
  return Synced(handle, real(handle));
}

int fdatasync(int handle) {
  static auto* const real = Real<int(int)>("fdatasync");
  return Synced(handle, real(handle));
}

int rename(const char* from, const char* to) noexcept {
  static auto* const real = Real<int(const char*, const char*)>("rename");
  EndIfItFails();
  return real(from, to);
}

int unlink(const char* path) noexcept {
  static auto* const real = Real<int(const char*)>("unlink");
  EndIfItFails();
  return real(path);
}
}
