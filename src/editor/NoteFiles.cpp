#include "editor/NoteFiles.h"

#include "shell/Paths.h"

#include <QFile>

namespace talnik {

QString NewRecordingPath(const QString& recordFolder) {
  return recordFolder + u"/new.wav"_qs;
}

QString NewSoundFileName(const Date& now) {
  const auto twoDigits = [](int number) { return QString::number(number).rightJustified(2, u'0'); };
  // The minute stands without a leading zero, so one below 10 has no second digit.
  const QString minute = QString::number(now.Minute());
  return QString(QChar(u'A' + now.Month() - 1)) + twoDigits(now.Day()) + twoDigits(now.Hour()) + minute.left(1) + u'.' +
         minute.mid(1) + twoDigits(now.Second());
}

QString AdoptNewRecording(const QString& recordFolder, const Date& now) {
  const QString fresh = NewRecordingPath(recordFolder);
  if (!FileExists(fresh)) return QString();
  const QString name = NewSoundFileName(now);
  const QString path = recordFolder + u'/' + name;
  QFile::remove(path);
  if (!QFile::copy(fresh, path)) return QString();
  QFile::remove(fresh);
  return name;
}

void DropNewRecording(const QString& recordFolder) {
  QFile::remove(NewRecordingPath(recordFolder));
}

QString NotePath(const QString& wav, const QString& recordFolder) {
  if (wav.isEmpty() || wav.contains(u'/') || wav.contains(u'\\')) return wav;
  return recordFolder + u'/' + wav;
}

}  // namespace talnik
