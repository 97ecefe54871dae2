#include "store/CsvFile.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace talnik {

namespace {

/// Some two million appointments.
constexpr qint64 kLargestFile = 128 * 1024 * 1024;

QString Ending() {
  return u".csv"_qs;
}

QString NoFileText() {
  return QCoreApplication::translate("CsvFile", "To není soubor.");
}

/// Why there is nothing to read; empty when there is.
QString WhyNoFile(const QString& path) {
  const QFileInfo info(path);
  if (!info.exists()) return QCoreApplication::translate("CsvFile", "Soubor neexistuje.");
  // A pipe or a device would keep us waiting, perhaps for ever.
  if (!info.isFile()) return NoFileText();
  if (info.size() > kLargestFile) return QCoreApplication::translate("CsvFile", "Soubor je příliš velký.");
  return QString();
}

QString ReasonText(QFileDevice::FileError error) {
  switch (error) {
    case QFileDevice::PermissionsError:
      return QCoreApplication::translate("CsvFile", "Přístup byl odepřen.");
    case QFileDevice::WriteError:
    case QFileDevice::ResourceError:
      return QCoreApplication::translate("CsvFile", "Disk je plný nebo se na něj nedá zapisovat.");
    default:
      return QCoreApplication::translate("CsvFile", "Chyba při práci se souborem.");
  }
}

}  // namespace

QString CsvFolder(const QString& path) {
  const qsizetype separator = path.lastIndexOf(u'/');
  return path.left(separator == 0 ? 1 : separator < 0 ? 0 : separator);
}

QString WithCsvEnding(const QString& path) {
  return path.endsWith(Ending(), Qt::CaseInsensitive) ? path : QString(path + Ending());
}

std::optional<QByteArray> ReadCsvFile(const QString& path, QString& reason) {
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

bool WriteCsvFile(const QString& path, const QByteArray& bytes, QString& reason) {
  QSaveFile file(path);
  // A disk that fills up within the last write shows in the flush only; commit would take the shortened file.
  const bool written = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
  if (written && file.commit()) return true;
  reason = QFileInfo(path).isDir() ? NoFileText() : ReasonText(file.error());
  return false;
}

}  // namespace talnik
