#include "platform/WholeFile.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSaveFile>

#include <sys/stat.h>
#include <unistd.h>

namespace talnik {

namespace {

/// Some two million appointments.
constexpr qint64 kLargestFile = 128 * 1024 * 1024;

QString NoFileText() {
  return QCoreApplication::translate("WholeFile", "To není soubor.");
}

QString ForbiddenText() {
  return QCoreApplication::translate("WholeFile", "Přístup byl odepřen.");
}

/// Why there is nothing to read; empty when there is.
QString WhyNoFile(const QString& path) {
  const QFileInfo info(path);
  if (!info.exists()) return QCoreApplication::translate("WholeFile", "Soubor neexistuje.");
  // A pipe or a device would keep us waiting, perhaps for ever.
  if (!info.isFile()) return NoFileText();
  if (!info.isReadable()) return ForbiddenText();
  if (info.size() > kLargestFile) return QCoreApplication::translate("WholeFile", "Soubor je příliš velký.");
  return QString();
}

QString ReasonText(QFileDevice::FileError error) {
  switch (error) {
    case QFileDevice::PermissionsError:
      return ForbiddenText();
    case QFileDevice::WriteError:
    case QFileDevice::ResourceError:
      return QCoreApplication::translate("WholeFile", "Disk je plný nebo se na něj nedá zapisovat.");
    default:
      return QCoreApplication::translate("WholeFile", "Chyba při práci se souborem.");
  }
}

/// In a folder of many a link may lie in wait that leads to what only we may write.
bool IsForeignLink(const QString& path) {
  const QFileInfo info(path);
  struct stat link {};
  return info.isSymLink() && (::lstat(QFile::encodeName(path), &link) != 0 || link.st_uid != ::geteuid());
}

/// Why a file could not be replaced. A file that cannot be opened has the same error whatever the reason.
QString WhyNotWritten(const QString& path, QFileDevice::FileError error) {
  const QFileInfo file(path);
  const QFileInfo folder(file.absolutePath());
  if (file.isDir()) return NoFileText();
  const bool forbidden =
      IsForeignLink(path) || (folder.exists() && (!folder.isWritable() || (file.exists() && !file.isWritable())));
  return forbidden ? ForbiddenText() : ReasonText(error);
}

}  // namespace

bool ReplaceFile(const QString& path, const std::function<bool(QIODevice& file)>& fill, Readers readers,
                 QString& reason) {
  QSaveFile file(path);
  bool replaced = !IsForeignLink(path) && file.open(QIODevice::WriteOnly);
  if (replaced && readers == Readers::UserAlone) file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
  // A disk that fills up within the last write shows in the flush only; commit would take the shortened file.
  replaced = replaced && fill(file) && file.flush() && file.commit();
  if (!replaced) reason = WhyNotWritten(path, file.error());
  return replaced;
}

bool WriteWholeFile(const QString& path, const QByteArray& bytes, Readers readers, QString& reason) {
  return ReplaceFile(
      path, [&bytes](QIODevice& file) { return file.write(bytes) == bytes.size(); }, readers, reason);
}

void SweepFolder(const QString& folder, const QStringList& names) {
  static const QRegularExpression ending(u"\\.[A-Za-z]{6}$"_qs);
  constexpr qint64 youngSeconds = 3600;
  const QDateTime young = QDateTime::currentDateTime().addSecs(-youngSeconds);
  const auto files = QDir(folder).entryInfoList(QDir::Files | QDir::Hidden | QDir::NoSymLinks);
  for (const QFileInfo& file : files) {
    const QString name = file.fileName();
    const auto match = ending.match(name);
    if (!match.hasMatch() || !names.contains(name.left(match.capturedStart()))) continue;
    if (file.ownerId() == ::geteuid() && file.lastModified() < young) QFile::remove(file.filePath());
  }
}

std::optional<QByteArray> ReadWholeFile(const QString& path, QString& reason) {
  reason = WhyNoFile(path);
  if (!reason.isEmpty()) return {};
  QFile file(path);
  if (file.open(QIODevice::ReadOnly)) {
    QByteArray bytes = file.readAll();
    if (file.error() == QFileDevice::NoError) return bytes;
  }
  reason = ReasonText(file.error());
  return {};
}

}  // namespace talnik
