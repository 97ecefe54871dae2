#include "platform/linux/IniFile.h"

#include "platform/linux/PrivateFiles.h"

#include <QDateTime>
#include <QFile>

#include <sys/stat.h>

#include <cerrno>

namespace talnik {

namespace {

/// What is larger is no settings file, whatever its name.
constexpr qint64 LargestIniFile = 16 * 1024 * 1024;

/// Two changes within one step of the file system's clock would look alike.
constexpr qint64 ClockStepMs = 50;

bool IsFresh(const struct stat& info) {
  const qint64 changed = static_cast<qint64>(info.st_mtim.tv_sec) * 1000 + info.st_mtim.tv_nsec / 1000000;
  return QDateTime::currentMSecsSinceEpoch() - changed < ClockStepMs;
}

QByteArray StampOf(const struct stat& info) {
  QByteArray stamp;
  for (const auto number : {static_cast<qint64>(info.st_ino), static_cast<qint64>(info.st_size),
                            static_cast<qint64>(info.st_mtim.tv_sec), static_cast<qint64>(info.st_mtim.tv_nsec),
                            static_cast<qint64>(info.st_ctim.tv_sec), static_cast<qint64>(info.st_ctim.tv_nsec)}) {
    stamp += QByteArray::number(number) + ' ';
  }
  return stamp;
}

}  // namespace

void IniFile::Load(const QString& path) const {
  struct stat info {};
  const bool found = ::stat(QFile::encodeName(path), &info) == 0;
  const bool missing = !found && (errno == ENOENT || errno == ENOTDIR);
  const QByteArray stamp = found ? StampOf(info) : QByteArray();
  if (found && path == path_ && stamp == stamp_) return;

  path_ = path;
  stamp_.clear();
  bytes_.clear();
  text_ = IniText();
  readable_ = missing;
  // A pipe or a device in the file's place would keep us waiting.
  if (!found || !S_ISREG(info.st_mode) || info.st_size > LargestIniFile) return;
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return;
  bytes_ = file.readAll();
  readable_ = file.error() == QFileDevice::NoError;
  if (!readable_) return;
  text_ = IniText(codePage_.Decode(bytes_));
  if (!IsFresh(info)) stamp_ = stamp;
}

const IniText& IniFile::Read(const QString& path) const {
  Load(path);
  return text_;
}

bool IniFile::Replace(const QString& path, const IniText& text) const {
  Load(path);
  if (!readable_) return false;
  const QByteArray bytes = codePage_.EncodeLike(bytes_, text.Text());
  if (bytes == bytes_ && QFile::exists(path)) return true;
  return ReplacePrivateFile(path, bytes);
}

}  // namespace talnik
