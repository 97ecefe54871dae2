#include "recurrence/EditSeries.h"

#include "dates/UtcStamp.h"
#include "recurrence/SpawnedRows.h"
#include "shell/Paths.h"
#include "store/Recordset.h"
#include "store/Statements.h"
#include "store/Store.h"
#include "store/Text.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLoggingCategory>
#include <QStringList>

#include <set>

namespace talnik {

namespace {

Q_LOGGING_CATEGORY(editTrace, "talnik.trace", QtWarningMsg)

QString OptionalText(const std::optional<Date>& date) {
  return date ? DateText(*date) : QString();
}

std::int64_t SecondsBetween(const Date& from, const Date& to) {
  return to.Seconds() - from.Seconds();
}

/// The moment moved as an occurrence was moved; unchanged where the occurrence was not, or the way leads out of the
/// range of dates.
Date Shifted(const Date& moment, const std::optional<Date>& from, const Date& to) {
  const std::int64_t shift = from ? SecondsBetween(*from, to) : 0;
  return shift == 0 ? moment : ShiftBySeconds(moment, shift).value_or(moment);
}

/// As far from the root's start as `moment` lies from the occurrence's.
std::optional<Date> AsFarFromStart(const ScheduleRecord& root, const RootEdit& edit, const Date& moment) {
  return Date::FromSeconds(root.apptime.value_or(edit.start).Seconds() + SecondsBetween(edit.start, moment));
}

/// An end that was taken away becomes the start: a row of a series always has one.
std::optional<Date> ShiftedEnd(const ScheduleRecord& root, const std::optional<Date>& oldEnd, const RootEdit& edit) {
  if (!edit.end) return root.apptime;
  return oldEnd && edit.origEnd ? Shifted(*oldEnd, edit.origEnd, *edit.end) : AsFarFromStart(root, edit, *edit.end);
}

std::optional<Date> ShiftedAlarm(const ScheduleRecord& root, const RootEdit& edit) {
  if (!edit.alarm) return {};
  return root.alarmtime && edit.origAlarm ? Shifted(*root.alarmtime, edit.origAlarm, *edit.alarm)
                                          : AsFarFromStart(root, edit, *edit.alarm);
}

void EditFromOccurrence(ScheduleRecord& root, const RootEdit& edit) {
  const std::optional<Date> oldEnd = root.appdur ? root.appdur : root.apptime;
  if (root.apptime) root.apptime = Shifted(*root.apptime, edit.origStart, edit.start);
  root.appdur = ShiftedEnd(root, oldEnd, edit);
  root.alarmtime = ShiftedAlarm(root, edit);
  root.alarm = root.alarmtime.has_value();
}

void EditFromRoot(ScheduleRecord& root, const RootEdit& edit) {
  root.apptime = edit.start;
  root.appdur = edit.end.value_or(edit.start);
  // From the root itself an alarm can be set, but not taken away.
  if (!edit.alarm) return;
  root.alarmtime = edit.alarm;
  root.alarm = true;
}

/// The roots that an edit is for. An identity from elsewhere may begin with "_": it then names itself alone.
Statement RootsOf(const QString& guid) {
  const QString base = SeriesBase(guid);
  if (!base.isEmpty()) return statements::OfSeriesWithStatus(base, StatusRoot);
  return {u"SELECT * FROM schedule WHERE status=9 AND guid=?"_qs, {StripAtNul(guid)}};
}

}  // namespace

SaveWay WayToSave(const QString& repeatRule, const ScheduleRecord& row) {
  if (repeatRule.isEmpty()) return SaveWay::Plain;
  if (row.recur.isEmpty()) return SaveWay::NewSeries;
  return row.status == StatusChanged ? SaveWay::Exception : SaveWay::AskWhichOnes;
}

QString ExceptionGuid(const QString& guid, const Date& start, const ZoneBiases& biases) {
  const QString id = StripAtNul(guid);
  return id.contains(u'_') ? id : QString(id + u'_' + ToUtcStamp(DateText(start), biases, start));
}

std::optional<Date> ShiftBySeconds(const Date& date, std::int64_t seconds) {
  return DateAdd(DateUnit::Second, seconds - date.Second(), date);
}

bool EditRootEvent(Store& store, const RootEdit& edit) {
  qCDebug(editTrace).noquote() << " EditRootEvent.title:" << edit.title << " /rule:" << edit.rule
                               << " .Start:" << DateText(edit.start) << " .End:" << OptionalText(edit.end)
                               << " .Alarm:" << OptionalText(edit.alarm) << ".guid(" << edit.guid;
  const auto roots = Recordset::Open(store, RootsOf(edit.guid));
  if (!roots) return false;
  return store.InTransaction([&] {
    bool written = true;
    for (roots->MoveFirst(); written && !roots->Eof(); roots->MoveNext()) {
      ScheduleRecord root = roots->Row();
      root.appointment = edit.title;
      if (edit.status == StatusOccurrence) {
        EditFromOccurrence(root, edit);
      } else {
        EditFromRoot(root, edit);
      }
      root.recur = edit.rule;
      written = roots->Update(root);
    }
    return written;
  });
}

namespace {

/// A change of rule under way.
class RuleChange {
 public:
  RuleChange(Store& store, const RuleEdit& edit, const SpawnTime& time)
      : store_(store), edit_(edit), time_(time), id_(StripAtNul(edit.guid).trimmed()) {}

  bool ReadExceptions();
  bool HasExceptions() const { return exceptions_.GetSize() > 0; }
  bool FindRoot();
  bool Replace();
  void DeleteNotes() const;

 private:
  /// Here the whole guid counts: an exception finds itself alone, and so no root.
  bool IsMember(const ScheduleRecord& row) const { return row.guid.contains(id_, Qt::CaseInsensitive); }
  bool DeleteRows();
  std::optional<Date> NewAlarm() const;
  ScheduleRecord NewRoot() const;
  bool PutBackExceptions();
  const RecurEvent::Event* ExceptionAt(const std::optional<Date>& moment) const;

  Store& store_;
  const RuleEdit& edit_;
  const SpawnTime& time_;
  QString id_;
  RecurEvent exceptions_;
  Date rootStart_;
  Date rootEnd_;
  std::set<QString> notes_;
};

bool RuleChange::ReadExceptions() {
  return store_.ForEach(statements::OfSeriesWithStatus(id_, StatusChanged), [this](const ScheduleRecord& row) {
    if (!IsMember(row) || !row.apptime) return true;
    const QString stamp = row.guid.section(u'_', 1, 1);
    exceptions_.SaveEvent({.title = row.appointment,
                           .start = *row.apptime,
                           .end = row.appdur.value_or(*row.apptime),
                           .alarm = row.alarmtime,
                           .rule = row.recur,
                           .id = row.guid,
                           .exceptionTime = CDate(FromUtcStamp(stamp, time_.biases), time_.now)});
    return true;
  });
}

bool RuleChange::FindRoot() {
  bool found = false;
  const bool read = store_.ForEach(statements::OfSeriesWithStatus(id_, StatusRoot), [&](const ScheduleRecord& root) {
    if (!IsMember(root) || !root.apptime) return true;
    rootStart_ = *root.apptime;
    rootEnd_ = root.appdur.value_or(rootStart_);
    found = true;
    return false;
  });
  return read && found;
}

bool RuleChange::DeleteRows() {
  const auto rows = Recordset::Open(store_, statements::OfSeries(id_));
  if (!rows) return false;
  for (rows->MoveFirst(); !rows->Eof(); rows->MoveNext()) {
    if (!IsMember(rows->Row())) continue;
    const QString note = StripAtNul(rows->Row().wav);
    if (note.contains(u'.')) notes_.insert(note);
    if (!rows->Delete()) return false;
  }
  qCDebug(editTrace).noquote() << " --- Rule.RecordCnt> " << notes_.size();
  return true;
}

/// The alarm keeps its distance from the start, in whole minutes, measured on the record that is open.
std::optional<Date> RuleChange::NewAlarm() const {
  if (!edit_.alarm) return {};
  const auto minute = [](const Date& date) { return (date.Seconds() - date.Second()) / 60; };
  return DateAdd(DateUnit::Minute, minute(*edit_.alarm) - minute(edit_.start), rootStart_);
}

ScheduleRecord RuleChange::NewRoot() const {
  ScheduleRecord root;
  root.appointment = edit_.title;
  root.apptime = rootStart_;
  root.appdur = rootEnd_;
  root.wav = edit_.note.trimmed();
  root.recur = edit_.newRule;
  root.status = StatusRoot;
  root.guid = id_;
  root.alarmtime = NewAlarm();
  root.alarm = root.alarmtime.has_value();
  return root;
}

const RecurEvent::Event* RuleChange::ExceptionAt(const std::optional<Date>& moment) const {
  for (qsizetype i = 0; i < exceptions_.GetSize(); ++i) {
    if (moment && exceptions_.Get(i).exceptionTime == moment) return &exceptions_.Get(i);
  }
  return nullptr;
}

bool RuleChange::PutBackExceptions() {
  const auto rows = Recordset::Open(store_, statements::OfSeriesWithStatus(id_, StatusOccurrence));
  if (!rows) return false;
  for (rows->MoveFirst(); !rows->Eof(); rows->MoveNext()) {
    const RecurEvent::Event* exception = ExceptionAt(rows->Row().apptime);
    if (!exception) continue;
    ScheduleRecord row = rows->Row();
    row.status = StatusChanged;
    row.guid = exception->id;
    row.appointment = exception->title;
    row.apptime = exception->start;
    row.appdur = exception->end;
    row.alarmtime = exception->alarm;
    row.alarm = exception->alarm.has_value();
    if (!rows->Update(row)) return false;
    qCDebug(editTrace) << "exc. UPDATED";
  }
  return true;
}

bool RuleChange::Replace() {
  return store_.InTransaction([this] {
    const ScheduleRecord root = NewRoot();
    if (!DeleteRows() || !store_.Insert(root)) return false;
    bool addFirst = true;
    const AddRow add = [this](const ScheduleRecord& row) { return store_.Insert(row); };
    return RecurrPopulate(add, *SeriesOfRoot(root), addFirst, time_) && PutBackExceptions();
  });
}

void RuleChange::DeleteNotes() const {
  for (const QString& note : notes_) {
    // The new root names it still.
    if (note == edit_.note.trimmed()) continue;
    // A bare name would be looked for in whatever folder the program happens to stand in.
    if (QDir::isAbsolutePath(note) && FileExists(note)) QFile::remove(note);
  }
}

}  // namespace

bool EditRecurrentEvent(Store& store, const RuleEdit& edit, const SpawnTime& time, const RuleEditDialogs& dialogs) {
  RuleChange change(store, edit, time);
  if (!change.ReadExceptions()) return false;
  if (change.HasExceptions() &&
      !dialogs.ask(QCoreApplication::translate(
          "EditSeries",
          "Události od počátku této série budou nahrazeny aktuálně zvolenou událostí a bude obnoveno pravidelné "
          "opakování událostí podle vámi zvoleného nastavení."))) {
    return false;
  }
  if (!change.FindRoot()) {
    dialogs.warn(QCoreApplication::translate("EditSeries", "Nelze najít výchozí záznam pro událost ") + edit.title);
    return false;
  }
  if (!change.Replace()) return false;
  change.DeleteNotes();
  return true;
}

}  // namespace talnik
