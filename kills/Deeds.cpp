#include "Deeds.h"

#include "calendar/NameDays.h"
#include "editor/NoteFiles.h"
#include "editor/Purge.h"
#include "editor/SaveRecord.h"
#include "recurrence/EditSeries.h"
#include "store/CsvExchange.h"
#include "store/Recordset.h"
#include "store/Statements.h"
#include "sync/ExchangeFile.h"
#include "sync/GoogleMerge.h"

#include <QFile>

#include <array>

namespace talnik::soak {

namespace {

constexpr std::array kRules = {"RRULE:FREQ=DAILY INTERVAL=1 COUNT=20", "RRULE:FREQ=WEEKLY BYDAY=MO,WE INTERVAL=1 ",
                               "RRULE:FREQ=MONTHLY BYDAY=2TU INTERVAL=1 ", "RRULE:FREQ=DAILY INTERVAL=3 COUNT=60"};

QString Rule(int number) {
  return QString::fromLatin1(kRules.at(static_cast<std::size_t>(number) % kRules.size()));
}

}  // namespace

struct Deeds::Kind {
  const char* name;
  bool (Deeds::*act)();
};

const std::vector<Deeds::Kind>& Deeds::Table() {
  static const std::vector<Kind> table = {{"save a record", &Deeds::SaveRecord},
                                          {"save a series", &Deeds::SaveSeries},
                                          {"edit a record", &Deeds::EditRecord},
                                          {"edit a series", &Deeds::EditSeries},
                                          {"extend series", &Deeds::Extend},
                                          {"rebuild", &Deeds::Rebuild},
                                          {"change a rule", &Deeds::ChangeRule},
                                          {"delete", &Deeds::DeleteOne},
                                          {"purge", &Deeds::Purge},
                                          {"import", &Deeds::Import},
                                          {"merge", &Deeds::Merge},
                                          {"save name days", &Deeds::SaveNames},
                                          {"save settings", &Deeds::SaveSettings},
                                          {"write exchange file", &Deeds::WriteExchange}};
  return table;
}

Deeds::Deeds(QString folder, quint32 seed)
    : folder_(std::move(folder)), seed_(seed), store_(folder_ + u"/talnik.MDB"_qs) {}

std::size_t Deeds::Kinds() {
  return Table().size();
}

const char* Deeds::NameOf(std::size_t kind) {
  return Table().at(kind).name;
}

std::size_t Deeds::KindOf(quint32 seed, int number) {
  return QRandomGenerator(seed ^ static_cast<quint32>(number) * 2654435761U).bounded(static_cast<quint32>(Kinds()));
}

bool Deeds::Do(int number) {
  number_ = number;
  random_.seed(seed_ * 1000U + static_cast<quint32>(number));
  return (this->*Table().at(KindOf(seed_, number)).act)();
}

Date Deeds::AnyDay() {
  return DateAdd(DateUnit::Minute, Below(500'000), *Date::FromParts(2024, 1, 1)).value();
}

SpawnTime Deeds::Time() const {
  return {.now = DateAdd(DateUnit::Hour, number_ * 5, *Date::FromParts(2024, 1, 1)).value(),
          .biases = {-60, 0, -60, false}};
}

/// The note of a new record, which some have: the file first, then the row that names it.
QString Deeds::NewNote() {
  const QString name = u"N%1.wav"_qs.arg(number_);
  if (Below(2) == 0) return QString();
  QFile note(folder_ + u'/' + name);
  if (!note.open(QIODevice::WriteOnly)) return QString();
  return Below(2) == 0 ? name : note.fileName();
}

/// The rows of a statement, at any of them.
std::unique_ptr<Recordset> Deeds::AnyRow(const Statement& statement) {
  auto rows = Recordset::Open(store_, statement);
  if (!rows || rows->RecordCount() == 0) return rows;
  for (int moves = Below(static_cast<int>(rows->RecordCount())); moves > 0; --moves) rows->MoveNext();
  return rows;
}

bool Deeds::SaveRecord() {
  const auto rows = Recordset::Open(store_, statements::All());
  const Date start = AnyDay();
  const RecordFields fields{u"Úkol "_qs + QString::number(number_), start, DateAdd(DateUnit::Hour, 1, start), NewNote(),
                            start};
  return rows && SaveNewRecord(store_, *rows, fields, {}, Time());
}

bool Deeds::SaveSeries() {
  const auto rows = Recordset::Open(store_, statements::All());
  const RecordFields fields{u"Řada "_qs + QString::number(number_), AnyDay(), {}, NewNote(), {}};
  return rows && SaveNewRecord(store_, *rows, fields, Rule(Below(100)), Time());
}

bool Deeds::EditRecord() {
  const auto rows = AnyRow(statements::Visible());
  if (!rows || rows->RecordCount() == 0) return rows != nullptr;
  const RecordFields fields{u"Změna "_qs + QString::number(number_), AnyDay(), {}, rows->Row().wav, {}};
  const int way = Below(3);
  if (way == 0) return SavePlainEdit(*rows, fields);
  if (way == 1 && rows->Row().recur.isEmpty()) return SaveAsRoot(store_, *rows, fields, Rule(number_), Time());
  return SaveAsException(*rows, fields, fields.start, Time().biases);
}

bool Deeds::EditSeries() {
  const auto rows = AnyRow(statements::Roots());
  if (!rows || rows->RecordCount() == 0) return rows != nullptr;
  const ScheduleRecord& root = rows->Row();
  return EditRootEvent(store_, {.title = u"Celá řada "_qs + QString::number(number_),
                                .start = AnyDay(),
                                .rule = root.recur,
                                .guid = root.guid,
                                .status = root.status});
}

/// Only other programs say from when a series is to be extended.
bool Deeds::Extend() {
  const auto none = store_.Number({u"SELECT count(*)=0 FROM schedule WHERE spawntime IS NOT NULL"_qs, {}});
  if (!none) return false;
  if (*none != 0) return store_.Execute({u"UPDATE schedule SET spawntime=apptime+5 WHERE status=9"_qs, {}});
  return ExtendSeries(store_, AnyDay(), Time());
}

bool Deeds::Rebuild() {
  return RebuildOccurrences(store_, Time());
}

bool Deeds::ChangeRule() {
  const auto roots = AnyRow(statements::Roots());
  if (!roots || roots->RecordCount() == 0) return roots != nullptr;
  const RuleEdit edit{.guid = roots->Row().guid,
                      .newRule = Rule(Below(100)),
                      .title = u"Jiná řada "_qs + QString::number(number_),
                      .note = Below(2) == 0 ? roots->Row().wav : QString(),
                      .start = roots->Row().apptime.value_or(Date())};
  return EditRecurrentEvent(store_, edit, Time(), {[](const QString&) { return true; }, [](const QString&) {}});
}

bool Deeds::DeleteOne() {
  const auto rows = AnyRow(statements::AllByStart());
  if (!rows || rows->RecordCount() == 0) return rows != nullptr;
  if (WayToDelete(rows->Row()) == DeleteWay::Single) {
    const QString note = NotePath(rows->Row().wav, folder_);
    const bool done = DeleteSingle(*rows).done;
    if (done) RemoveUnusedNote(store_, note);
    return done;
  }
  if (Below(3) > 0) return DeleteOccurrence(store_, *rows, Time().biases).done;
  return DeleteWholeSeries(store_, rows->Row().guid, folder_).done;
}

bool Deeds::Purge() {
  const Date day = DateAdd(DateUnit::Day, Below(60), *Date::FromParts(2024, 1, 1)).value();
  const PurgeOutcome outcome = RemoveOlderThan(store_, day);
  for (const QString& note : outcome.notes) RemoveUnusedNote(store_, NotePath(note, folder_));
  return outcome.done;
}

bool Deeds::Import() {
  QString text = u"x\r\n"_qs;
  for (int line = Below(300); line > 0; --line) {
    text += u"\"%1\",\"8:30\",\"Dovoz %2\",,,TRUE,,\r\n"_qs.arg(DayText(AnyDay())).arg(Below(1000));
  }
  // The user gives up now and then, which is as good as a refusal.
  const auto goOn = [this](qint64, qint64) { return Below(4) > 0; };
  return ImportCsv(store_, text, AnyDay(), goOn).end == CsvEnd::Done;
}

/// Their side is ours, less what was deleted there, with what was added.
bool Deeds::Merge() {
  qint64 count = 0;
  const auto ours = ExportDataForGoogle(store_, count);
  if (!ours) return false;
  QStringList theirs;
  for (const QString& line : ours->split(u"\r\n"_qs)) {
    if (Below(10) > 0) theirs << line;
  }
  for (int added = Below(20); added > 0; --added) {
    theirs << u"Odjinud;%1;;;;g%2-%3;0"_qs.arg(DayText(AnyDay())).arg(number_).arg(added);
  }
  return store_.InTransaction([&] {
    GoogleMerge merge(store_, Time().biases, Time().now);
    for (const QString& line : theirs) merge.ImportDataGoogle(line);
    return merge.LinesTaken() && (!merge.RebuildFlag() || RebuildOccurrences(store_, merge.ForRebuild())) &&
           merge.DeleteMissingEvents();
  });
}

bool Deeds::SaveNames() {
  NameDays names;
  if (!names.LoadNames(Names(), codePage_)) return false;
  names.SetNameOfDay(1 + Below(12), 1 + Below(28), u"Jméno "_qs + QString::number(number_));
  return names.SaveNames(Names(), codePage_);
}

bool Deeds::SaveSettings() {
  cSetting setting(profile_, shell_);
  setting.Init(folder_ + u"/talnik.ini"_qs, {}, {});
  setting.User = u"u%1@x.cz"_qs.arg(number_);
  setting.AlarmLoop = Below(100);
  setting.Rate = Below(10);
  return Below(2) == 0 ? setting.SaveAppSettings() : setting.SaveVoiceSettings();
}

bool Deeds::WriteExchange() {
  qint64 count = 0;
  QString reason;
  const auto text = ExportDataForGoogle(store_, count);
  return text && WriteExchangeFile(folder_ + u"/LmData.txt"_qs, *text, codePage_, reason);
}

}  // namespace talnik::soak
