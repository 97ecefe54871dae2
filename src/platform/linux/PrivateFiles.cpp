#include "platform/linux/PrivateFiles.h"

#include "platform/WholeFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>
#include <unistd.h>

namespace talnik {

bool MakePrivateFolder(const QString& path) {
  if (QFileInfo(path).isDir()) return true;
  const QString parent = QFileInfo(path).path();
  if (path.isEmpty() || parent == path || !MakePrivateFolder(parent)) return false;
  // Another process may have been quicker.
  return ::mkdir(QFile::encodeName(path), S_IRWXU) == 0 || QFileInfo(path).isDir();
}

bool ClaimPrivateFolder(const QString& path) {
  const QByteArray name = QFile::encodeName(path);
  ::mkdir(name, S_IRWXU);
  struct stat info {};
  if (::lstat(name, &info) != 0 || !S_ISDIR(info.st_mode) || info.st_uid != geteuid()) return false;
  return (info.st_mode & (S_IRWXG | S_IRWXO)) == 0 || ::chmod(name, S_IRWXU) == 0;
}

bool ReplacePrivateFile(const QString& path, const QByteArray& bytes) {
  if (!MakePrivateFolder(QFileInfo(path).path())) return false;
  QString reason;
  return WriteWholeFile(path, bytes, Readers::UserAlone, reason);
}

}  // namespace talnik
