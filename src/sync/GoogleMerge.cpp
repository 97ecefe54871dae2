#include "sync/GoogleMerge.h"

#include "dates/UtcStamp.h"
#include "store/Store.h"
#include "store/Text.h"
#include "sync/GoogleLine.h"

#include <QLoggingCategory>

#include <algorithm>

namespace talnik {

namespace {

Q_LOGGING_CATEGORY(mergeTrace, "talnik.trace", QtWarningMsg)

QString OptionalMoment(const std::optional<Date>& moment) {
  return moment ? DateText(*moment) : QString();
}

QString WithoutBlanksBehind(const QString& text) {
  qsizetype size = text.size();
  while (size > 0 && text[size - 1] == u' ') --size;
  return text.left(size);
}

}  // namespace

GoogleMerge::GoogleMerge(Store& store, const ZoneBiases& biases, const Date& now)
    : store_(store), biases_(biases), now_(now), table_(store) {}

bool GoogleMerge::Ready() {
  if (!read_) failed_ = !table_.Read();
  read_ = true;
  return !failed_;
}

bool GoogleMerge::Kept(bool written) {
  failed_ = failed_ || !written;
  return written;
}

void GoogleMerge::Log(qint64 SyncTally::*count, const QString& line) {
  ++(tally_.*count);
  tally_.SyncDetail += line + u"\r\n"_qs;
}

ImportResult GoogleMerge::ImportDataGoogle(const QString& text) {
  if (text.isEmpty() || !Ready()) return NothingAdded;
  qCDebug(mergeTrace) << "------------- Talnik.ImportDataGoogle ----------";
  qCDebug(mergeTrace).noquote() << "line:" << text;
  GoogleLine line = ReadGoogleLine(text, biases_, now_);
  qCDebug(mergeTrace).noquote() << " .Id: " << line.id;
  if (line.status == StatusDeleted) {
    Remove(line);
    return NothingAdded;
  }
  if (line.rule.isEmpty() && !IsDate(line.start, now_)) return BadLine;
  bool found = false;
  for (MergeTable::Row* row : table_.WithGuid(line.id)) found = Match(*row, line) || found;
  const ImportResult result = found ? NothingAdded : Add(line);
  AddSyncId(line.id);
  return result;
}

/// Applies a line of a deleted record. With the last visible row of its series the series goes.
void GoogleMerge::Remove(const GoogleLine& line) {
  if (!MakeTombstones(line, table_.OfSeries(line.seriesId))) return;
  const MergeTable::Rows rows = table_.OfSeries(line.seriesId);
  const bool anyVisible = std::any_of(
      rows.begin(), rows.end(), [](const MergeTable::Row* row) { return row->status && *row->status < StatusDeleted; });
  if (!anyVisible) {
    for (MergeTable::Row* row : rows) {
      alarmsTouched_ = alarmsTouched_ || row->alarm;
      if (!Kept(table_.Delete(*row))) return;
    }
  }
  AddSyncId(line.id);
}

bool GoogleMerge::MakeTombstones(const GoogleLine& line, const MergeTable::Rows& rows) {
  const auto exceptionTime = CDate(line.exceptionTime, now_);
  if (!exceptionTime) return true;
  // A row without a moment of its own is judged by that of the row before it.
  std::optional<Date> reference;
  for (MergeTable::Row* row : rows) {
    if (!row->status || row->status == StatusRoot) continue;
    if (row->reference) reference = row->reference;
    if (reference != exceptionTime || row->status == StatusDeleted) continue;
    qCDebug(mergeTrace).noquote() << "Talnik.SetDel " << line.id;
    alarmsTouched_ = alarmsTouched_ || row->alarm;
    if (!Kept(table_.MakeTombstone(*row, line.id))) return false;
    Log(&SyncTally::RemovedCount, u"Del:"_qs + line.title + u' ' + line.id + u' ' + line.start);
  }
  return true;
}

/// Applies a line to a row of the same guid. False when it is not the line's row.
bool GoogleMerge::Match(MergeTable::Row& row, GoogleLine& line) {
  const int status = row.status.value_or(StatusSingle);
  if (status == line.status) {
    qCDebug(mergeTrace).noquote() << "Talnik.Found " << row.guid->text << " status:" << status;
    TakeStartFromRule(line);
    Change(row, line);
    return true;
  }
  if (line.status != StatusRoot || status != StatusSingle) return false;
  qCDebug(mergeTrace).noquote() << "Talnik.ChangedEvent from single to Rule " << line.rule;
  if (Kept(table_.MakeRoot(row, line.rule))) rebuild_ = true;
  return true;
}

/// The line of a series has its moments in the rule.
void GoogleMerge::TakeStartFromRule(GoogleLine& line) const {
  if (!line.start.isEmpty() || !line.end.isEmpty() || !line.stamp.isEmpty() || line.rule.isEmpty()) return;
  line.start = line.ruleStart;
  line.end = line.ruleEnd;
  line.status = StatusRoot;
  line.stamp = ToUtcStamp(line.ruleStart, biases_, now_);
}

/// Brings a row to what the line says and tells what has changed; what cannot be read changes nothing.
QString GoogleMerge::ChangesOf(const GoogleLine& line, MergeTable::Row& row) const {
  QString changes;
  const auto change = [&](const QString& what, const QString& value) { changes += what + value + u", "_qs; };
  const auto changeMoment = [&](std::optional<Date>& moment, const QString& what, const QString& value) {
    const auto wanted = CDate(value, now_);
    if (!wanted || moment == wanted) return;
    moment = wanted;
    change(what, value);
  };
  if (WithoutBlanksBehind(row.title) != line.title) {
    row.title = line.title;
    change(u" jméno: "_qs, line.title);
  }
  changeMoment(row.start, u" čas počátku: "_qs, line.start);
  qCDebug(mergeTrace).noquote() << "Talnik.Update.EndTime " << line.end << " d.:" << OptionalMoment(row.end);
  changeMoment(row.end, u" čas ukončení: "_qs, line.end);
  qCDebug(mergeTrace).noquote() << "Talnik.Update.AlarmTime " << line.alarm << " d.:" << OptionalMoment(row.alarm);
  if (!line.alarm.isEmpty()) {
    changeMoment(row.alarm, u" alarm: "_qs, line.alarm);
  } else if (row.alarm) {
    row.alarm.reset();
    change(u" alarm: "_qs, QString());
  }
  return changes;
}

void GoogleMerge::Change(MergeTable::Row& row, const GoogleLine& line) {
  MergeTable::Row changed = row;
  const QString changes = ChangesOf(line, changed);
  if (changes.isEmpty()) return;
  alarmsTouched_ = alarmsTouched_ || row.alarm || changed.alarm;
  if (!Kept(table_.Update(row, changed))) return;
  Log(&SyncTally::ChangedCount, u"Upraveno: "_qs + line.title + changes + u' ' + row.guid->text);
}

ScheduleRecord GoogleMerge::RecordOf(const GoogleLine& line) const {
  ScheduleRecord record;
  record.apptime = CDate(line.start, now_);
  record.appointment = line.title;
  record.appdur = CDate(line.end, now_);
  record.alarm = line.hasAlarm;
  record.alarmtime = CDate(line.alarm, now_);
  record.guid = line.id.isEmpty() ? NewGuidText() : line.id;
  record.status = line.status;
  record.recur = line.rule;
  if (!line.stamp.isEmpty()) record.reftime = CDate(FromUtcStamp(line.stamp, biases_), now_);
  if (line.status == StatusChanged) record.reftime = CDate(line.exceptionTime, now_);
  return record;
}

ImportResult GoogleMerge::Add(GoogleLine& line) {
  qCDebug(mergeTrace).noquote() << "+Talnik.AddNew " << line.title << ' ' << line.start;
  TakeStartFromRule(line);
  const ScheduleRecord record = RecordOf(line);
  if (!Kept(table_.Insert(record))) return NothingAdded;
  const bool isException = line.status == StatusChanged;
  Log(isException ? &SyncTally::ChangedCount : &SyncTally::AddedCount,
      (isException ? u"Upraveno: "_qs : u"Přidáno: "_qs) + line.title + u' ' + line.start + u' ' + record.guid);
  qCDebug(mergeTrace) << "Talnik.mySet.RecordCount(after add): " << table_.Size();
  rebuild_ = rebuild_ || line.status == StatusRoot;
  return line.hasAlarm ? AlarmAdded : RowAdded;
}

bool GoogleMerge::LinesTaken() {
  return !failed_ && Kept(table_.Finish());
}

SpawnTime GoogleMerge::ForRebuild() {
  rebuilt_ = true;
  return {.now = now_, .biases = biases_, .ids = &spawned_};
}

bool GoogleMerge::DeleteMissingEvents() {
  if (!LinesTaken() || !Ready()) return false;
  for (const QString& id : spawned_.Ids()) AddSyncId(id);
  if (rebuilt_ && !Kept(table_.Read())) return false;
  for (MergeTable::Row* row : table_.Unnamed()) {
    qCDebug(mergeTrace).noquote() << "-Talnik.Del " << row->guid->text << " t:" << row->title;
    if (!Kept(table_.Delete(*row))) return false;
    alarmsTouched_ = alarmsTouched_ || row->alarm;
    if (row->status == StatusDeleted || row->status == StatusOccurrence) continue;
    Log(&SyncTally::RemovedCount,
        u"Smazáno: "_qs + row->title + u' ' + OptionalMoment(row->start) + u' ' + row->guid->text);
  }
  return LinesTaken();
}

}  // namespace talnik
