#include "sync/SyncFiles.h"

#include "platform/CodePage.h"
#include "platform/WholeFile.h"
#include "shell/Paths.h"
#include "sync/ExchangeFile.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <array>

namespace talnik {

namespace {

const QString LineEnd = QStringLiteral("\r\n");
constexpr auto ForUserAlone = QFile::ReadOwner | QFile::WriteOwner;
constexpr qint64 CopyBlock = 1 << 20;

QString Doubled(QString path) {
  return path.replace(u'\\', u"\\\\"_qs);
}

QString LogPath(QString exchangePath) {
  return exchangePath.replace(u".txt"_qs, u".log"_qs);
}

QString RequestText(const Paths& paths, const AgentRequest& request) {
  const bool sync = request.action == AgentRequest::Action::Sync;
  QStringList lines{u"[Login]"_qs, u"[Application]"_qs,
                    sync ? u"Action = Login+Sync+Close"_qs : u"Action = Encrypt"_qs};
  if (sync) lines << u"SourceRule = "_qs + QString::number(request.sourceRule);
  lines << u"CallBack =  "_qs + request.callback;
  if (sync) {
    lines << u"LmFileName = "_qs + Doubled(paths.LmData) << u"GgFileName = "_qs + Doubled(paths.GgData)
          << u"LmFileName_Saved = "_qs + Doubled(paths.LmDataSaved)
          << u"GgFileName_Saved = "_qs + Doubled(paths.GgDataSaved);
  }
  return lines.join(LineEnd) + LineEnd;
}

/// The sentences of one log: added, removed, changed.
QString ChangesIn(const QString& logPath, const CodePage& codePage) {
  static constexpr std::array<const char*, 3> verbs = {QT_TRANSLATE_NOOP("SyncReport", "Přidáno "),
                                                       QT_TRANSLATE_NOOP("SyncReport", "Odebráno "),
                                                       QT_TRANSLATE_NOOP("SyncReport", "Upraveno ")};
  QString reason;
  const QString text = ReadExchangeFile(logPath, codePage, reason).value_or(QString());
  ExchangeLines lines(text);
  QStringList sentences;
  for (const char* verb : verbs) {
    if (lines.AtEnd()) break;
    const QString number = lines.Next().toString();
    if (number.trimmed().toLongLong() > 0)
      sentences << QCoreApplication::translate("SyncReport", verb) + number +
                       QCoreApplication::translate("SyncReport", " záznamů.");
  }
  return sentences.join(LineEnd);
}

}  // namespace

bool WriteAgentRequest(const Paths& paths, const AgentRequest& request, const CodePage& codePage, QString& reason) {
  return WriteExchangeFile(paths.DataFolder + u"/GoogleAccess.ini"_qs, RequestText(paths, request), codePage, reason);
}

bool CopyAsWhole(const QString& from, const QString& to) {
  QFile source(from);
  if (!source.open(QIODevice::ReadOnly)) return false;
  QString reason;
  return ReplaceFile(
      to,
      [&source](QIODevice& target) {
        while (!source.atEnd()) {
          const QByteArray block = source.read(CopyBlock);
          if (block.isEmpty() || target.write(block) != block.size()) return false;
        }
        return source.error() == QFileDevice::NoError;
      },
      Readers::UserAlone, reason);
}

void SyncBackup(const Paths& paths) {
  const QString folder = paths.DataFolder + u"/SYNCBACKUP"_qs;
  QDir().mkdir(folder, ForUserAlone | QFile::ExeOwner);
  // Nothing is being written to the store now, so its file is whole.
  for (const QString& path : {paths.LmData, paths.GgData, paths.LmDataSaved, paths.GgDataSaved, paths.Store}) {
    CopyAsWhole(path, folder + u'/' + QFileInfo(path).fileName());
  }
}

bool WriteSyncLog(const Paths& paths, const SyncTally& tally, const Date& now, const CodePage& codePage,
                  QString& reason) {
  QString text;
  for (const qint64 count : {tally.AddedCount, tally.RemovedCount, tally.ChangedCount}) {
    text += QString::number(count) + LineEnd;
  }
  text += u"Synchronizace Talníku "_qs + DateText(now) + LineEnd + tally.SyncDetail;
  return WriteExchangeFile(LogPath(paths.LmData), text, codePage, reason);
}

QString SyncReport(const Paths& paths, const CodePage& codePage) {
  const QFileInfo log(LogPath(paths.LmData));
  if (!log.exists()) return QCoreApplication::translate("SyncReport", "Synchronizace nebyla provedena.");
  QString report = QCoreApplication::translate("SyncReport", "Datum synchronizace: ") +
                   DateText(Date::FromQDateTime(log.lastModified()));
  const QString ours = ChangesIn(log.filePath(), codePage);
  const QString theirs = ChangesIn(LogPath(paths.GgData), codePage);
  if (ours.isEmpty() && theirs.isEmpty())
    return report + LineEnd + QCoreApplication::translate("SyncReport", "Nedošlo k žádným změnám.");
  if (!ours.isEmpty()) report += LineEnd + QCoreApplication::translate("SyncReport", "Talník:") + LineEnd + ours;
  if (!theirs.isEmpty()) report += LineEnd + QCoreApplication::translate("SyncReport", "Google:") + LineEnd + theirs;
  return report;
}

}  // namespace talnik
