#include "sync/GoogleMerge.h"

#include "dates/UtcStamp.h"
#include "store/Store.h"
#include "store/Text.h"
#include "store/WithoutIndexes.h"
#include "sync/GoogleLine.h"

#include <QLoggingCategory>

#include <algorithm>
#include <tuple>
#include <vector>

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

/// A row that no line has named.
struct UnnamedRow {
  qint64 key;
  std::optional<Date> start;
  std::optional<int> status;
  QString guid;
  QString title;
  bool hasAlarm;
};

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
  const std::vector<MergeTable::Row*> rows = table_.OfSeries(line.seriesId);
  const bool anyVisible = std::any_of(rows.begin(), rows.end(), [](const MergeTable::Row* row) {
    return row->record.status && *row->record.status < StatusDeleted;
  });
  if (!anyVisible) {
    for (MergeTable::Row* row : rows) {
      alarmsTouched_ = alarmsTouched_ || row->record.alarmtime;
      if (!Kept(table_.Delete(*row))) return;
    }
  }
  AddSyncId(line.id);
}

bool GoogleMerge::MakeTombstones(const GoogleLine& line, const std::vector<MergeTable::Row*>& rows) {
  const auto exceptionTime = CDate(line.exceptionTime, now_);
  if (!exceptionTime) return true;
  // A row without a moment of its own is judged by that of the row before it.
  std::optional<Date> reference;
  for (MergeTable::Row* row : rows) {
    if (!row->record.status || row->record.status == StatusRoot) continue;
    if (row->record.reftime) reference = row->record.reftime;
    if (reference != exceptionTime || row->record.status == StatusDeleted) continue;
    qCDebug(mergeTrace).noquote() << "Talnik.SetDel " << line.id;
    alarmsTouched_ = alarmsTouched_ || row->record.alarmtime;
    ScheduleRecord tombstone = row->record;
    tombstone.guid = line.id;
    tombstone.status = StatusDeleted;
    if (!Kept(table_.Update(*row, tombstone))) return false;
    Log(&SyncTally::RemovedCount, u"Del:"_qs + line.title + u' ' + line.id + u' ' + line.start);
  }
  return true;
}

/// Applies a line to a row of the same guid. False when it is not the line's row.
bool GoogleMerge::Match(MergeTable::Row& row, GoogleLine& line) {
  const int status = row.record.status.value_or(StatusSingle);
  if (status == line.status) {
    qCDebug(mergeTrace).noquote() << "Talnik.Found " << row.record.guid << " status:" << status;
    TakeStartFromRule(line);
    Change(row, line);
    return true;
  }
  if (line.status != StatusRoot || status != StatusSingle) return false;
  qCDebug(mergeTrace).noquote() << "Talnik.ChangedEvent from single to Rule " << line.rule;
  ScheduleRecord root = row.record;
  root.status = StatusRoot;
  root.recur = line.rule;
  if (Kept(table_.Update(row, root))) rebuild_ = true;
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

/// Brings a record to what the line says and tells what has changed; what cannot be read changes nothing.
QString GoogleMerge::ChangesOf(const GoogleLine& line, ScheduleRecord& record) const {
  QString changes;
  const auto change = [&](const QString& what, const QString& value) { changes += what + value + u", "_qs; };
  const auto changeMoment = [&](std::optional<Date>& moment, const QString& what, const QString& value) {
    const auto wanted = CDate(value, now_);
    if (!wanted || moment == wanted) return;
    moment = wanted;
    change(what, value);
  };
  if (WithoutBlanksBehind(record.appointment) != line.title) {
    record.appointment = line.title;
    change(u" jméno: "_qs, line.title);
  }
  changeMoment(record.apptime, u" čas počátku: "_qs, line.start);
  qCDebug(mergeTrace).noquote() << "Talnik.Update.EndTime " << line.end << " d.:" << OptionalMoment(record.appdur);
  changeMoment(record.appdur, u" čas ukončení: "_qs, line.end);
  qCDebug(mergeTrace).noquote() << "Talnik.Update.AlarmTime " << line.alarm
                                << " d.:" << OptionalMoment(record.alarmtime);
  if (!line.alarm.isEmpty()) {
    changeMoment(record.alarmtime, u" alarm: "_qs, line.alarm);
  } else if (record.alarmtime) {
    record.alarmtime.reset();
    change(u" alarm: "_qs, QString());
  }
  return changes;
}

void GoogleMerge::Change(MergeTable::Row& row, const GoogleLine& line) {
  ScheduleRecord changed = row.record;
  const QString changes = ChangesOf(line, changed);
  if (changes.isEmpty()) return;
  alarmsTouched_ = alarmsTouched_ || row.record.alarmtime || changed.alarmtime;
  if (!Kept(table_.Update(row, changed))) return;
  Log(&SyncTally::ChangedCount, u"Upraveno: "_qs + line.title + changes + u' ' + row.record.guid);
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

bool GoogleMerge::DeleteMissingEvents() {
  if (failed_) return false;
  std::vector<UnnamedRow> unnamed;
  std::size_t rows = 0;
  const Statement all{u"SELECT rowid,guid,status,apptime,alarmtime,appointment FROM schedule"_qs, {}};
  const bool read = store_.ForEachRow(all, [&](const StoreRow& row) {
    ++rows;
    const QString guid = StripAtNul(row.Text(1));
    if (ids_.Contains(guid)) return true;
    const auto status = row.IsNull(2) ? std::nullopt : std::optional(static_cast<int>(row.Number(2)));
    unnamed.push_back({row.Number(0), row.Moment(3), status, guid, row.Text(5), !row.IsNull(4)});
    return true;
  });
  if (!Kept(read)) return false;
  std::sort(unnamed.begin(), unnamed.end(), [](const UnnamedRow& a, const UnnamedRow& b) {
    return std::tie(a.start, a.status, a.key) < std::tie(b.start, b.status, b.key);
  });
  const auto remove = [this](const UnnamedRow& row) {
    qCDebug(mergeTrace).noquote() << "-Talnik.Del " << row.guid << " t:" << row.title;
    if (!store_.Execute({u"DELETE FROM schedule WHERE rowid=?"_qs, {row.key}})) return false;
    alarmsTouched_ = alarmsTouched_ || row.hasAlarm;
    if (row.status == StatusDeleted || row.status == StatusOccurrence) return true;
    Log(&SyncTally::RemovedCount, u"Smazáno: "_qs + row.title + u' ' + OptionalMoment(row.start) + u' ' + row.guid);
    return true;
  };
  const auto removeAll = [&] { return std::all_of(unnamed.begin(), unnamed.end(), remove); };
  // Where most rows go, it is cheaper to make the indexes anew than to keep them at every row.
  constexpr std::size_t few = 5000;
  const bool most = unnamed.size() >= few && unnamed.size() >= rows / 3;
  return Kept(most ? WithoutIndexes(store_, removeAll) : store_.InTransaction(removeAll));
}

}  // namespace talnik
