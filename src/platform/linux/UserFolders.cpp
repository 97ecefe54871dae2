#include "platform/linux/UserFolders.h"

#include "platform/linux/PrivateFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <pwd.h>
#include <unistd.h>

namespace talnik {

namespace {

/// A folder named by the environment; relative ones do not count.
QString FolderVariable(const char* name) {
  const QString path = QFile::decodeName(qgetenv(name));
  return QDir::isAbsolutePath(path) ? QDir::cleanPath(path) : QString();
}

QString XdgFolder(const char* variable, const QString& inHome) {
  QString path = FolderVariable(variable);
  if (!path.isEmpty()) return path;
  const QString home = HomeFolder();
  return home.isEmpty() ? QString() : QDir(home).filePath(inHome);
}

}  // namespace

QString HomeFolder() {
  QString path = FolderVariable("HOME");
  if (!path.isEmpty()) return path;
  const passwd* user = getpwuid(geteuid());
  const QString home = user ? QFile::decodeName(user->pw_dir) : QString();
  return QDir::isAbsolutePath(home) ? QDir::cleanPath(home) : QString();
}

QString DataHome() {
  return XdgFolder("XDG_DATA_HOME", u".local/share"_qs);
}

QString ConfigHome() {
  return XdgFolder("XDG_CONFIG_HOME", u".config"_qs);
}

QString RuntimeFolder() {
  // A session's folder that another user owns was inherited by way of su or sudo; it is not ours to write to.
  const QString session = FolderVariable("XDG_RUNTIME_DIR");
  if (!session.isEmpty() && QFileInfo(session).ownerId() == geteuid()) {
    QString folder = session + u"/talnik";
    if (ClaimPrivateFolder(folder)) return folder;
  }
  QString temporary = FolderVariable("TMPDIR");
  if (temporary.isEmpty()) temporary = u"/tmp"_qs;
  temporary += u"/talnik-" + QString::number(geteuid());
  if (ClaimPrivateFolder(temporary)) return temporary;
  const QString data = DataHome();
  if (data.isEmpty() || !MakePrivateFolder(data)) return {};
  QString folder = data + u"/talnik-run";
  return ClaimPrivateFolder(folder) ? folder : QString();
}

}  // namespace talnik
