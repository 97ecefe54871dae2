#include "editor/NoteFiles.h"

#include "shell/Paths.h"
#include "store/Text.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

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
  // The names come round again each year, and the note of another record must not be lost.
  QString name;
  for (Date moment = now; QFileInfo::exists(recordFolder + u'/' + (name = NewSoundFileName(moment)));) {
    const auto next = DateAdd(DateUnit::Second, 1, moment);
    if (!next) return QString();
    moment = *next;
  }
  return QFile::rename(fresh, recordFolder + u'/' + name) ? name : QString();
}

void DropNewRecording(const QString& recordFolder) {
  QFile::remove(NewRecordingPath(recordFolder));
}

QString NotePath(const QString& wav, const QString& recordFolder) {
  if (wav.isEmpty() || wav.contains(u'/') || wav.contains(u'\\')) return wav;
  return recordFolder + u'/' + wav;
}

QString FindNote(const QString& path, const QString& recordFolder) {
  const QString inFolder = recordFolder + u'/' + ExtractFileName(path);
  const bool isElsewhere = !(QDir::isAbsolutePath(path) && FileExists(path)) && FileExists(inFolder);
  return isElsewhere ? inFolder : path;
}

QString RecordingEndText(Recorder::Ending ending) {
  switch (ending) {
    case Recorder::Ending::Broken:
      return QCoreApplication::translate("NoteFiles",
                                         "Nahrávání skončilo, mikrofon přestal odpovídat. Nahraná část je zachována.");
    case Recorder::Ending::NoRoom:
      return QCoreApplication::translate("NoteFiles",
                                         "Nahrávání skončilo, na disk už nelze zapisovat. Nahraná část je zachována.");
    case Recorder::Ending::TooLong:
      return QCoreApplication::translate("NoteFiles",
                                         "Nahrávání skončilo, nahrávka je příliš dlouhá. Nahraná část je zachována.");
    case Recorder::Ending::Failed:
      break;
  }
  return QString();
}

}  // namespace talnik
