#include "sync/MergeTable.h"

#include "store/Store.h"
#include "store/Text.h"

#include <QByteArray>
#include <QStringList>

#include <algorithm>
#include <tuple>
#include <utility>

namespace talnik {

namespace {

enum MergeColumn { RowKey, RowGuid, RowStatus, RowStart, RowReference, RowAlarm, RowTitle, RowEnd };

const QString& ReadSql() {
  static const QString sql = u"SELECT rowid,guid,status,apptime,reftime,alarmtime,appointment,appdur FROM schedule"_qs;
  return sql;
}

MergeTable::Row RowOf(const StoreRow& row, const QString& guid) {
  MergeTable::Row result{row.Number(RowKey), {}};
  ScheduleRecord& record = result.record;
  record.guid = guid;
  if (!row.IsNull(RowStatus)) record.status = static_cast<int>(row.Number(RowStatus));
  record.apptime = row.Moment(RowStart);
  record.reftime = row.Moment(RowReference);
  record.alarmtime = row.Moment(RowAlarm);
  if (record.status == StatusOccurrence) return result;
  record.appointment = row.Text(RowTitle);
  record.appdur = row.Moment(RowEnd);
  return result;
}

/// ORDER BY apptime,status,rowid; what has no value comes first.
std::vector<MergeTable::Row*> InOrder(std::vector<MergeTable::Row*> rows) {
  std::sort(rows.begin(), rows.end(), [](const MergeTable::Row* a, const MergeTable::Row* b) {
    return std::tie(a->record.apptime, a->record.status, a->key) <
           std::tie(b->record.apptime, b->record.status, b->key);
  });
  return rows;
}

QVariant MomentValue(const std::optional<Date>& moment) {
  return moment ? QVariant(moment->Serial()) : QVariant();
}

/// Sets the columns in which the records differ; nothing where they do not.
std::optional<Statement> UpdateOf(qint64 key, const ScheduleRecord& old, const ScheduleRecord& changed) {
  Statement update;
  QStringList assignments;
  const auto set = [&](const char16_t* assignment, bool differs, const QVariant& value) {
    if (!differs) return;
    assignments << QString::fromUtf16(assignment);
    update.values << value;
  };
  set(u"appointment=?", old.appointment != changed.appointment, changed.appointment);
  set(u"apptime=?", old.apptime != changed.apptime, MomentValue(changed.apptime));
  set(u"appdur=?", old.appdur != changed.appdur, MomentValue(changed.appdur));
  set(u"alarmtime=?", old.alarmtime != changed.alarmtime, MomentValue(changed.alarmtime));
  set(u"recur=?", old.recur != changed.recur, CutToSize(changed.recur, RecurSize));
  set(u"status=?", old.status != changed.status, changed.status.value_or(StatusSingle));
  set(u"guid=?", old.guid != changed.guid, CutToSize(changed.guid, GuidSize));
  if (assignments.isEmpty()) return {};
  update.sql = u"UPDATE schedule SET "_qs + assignments.join(u',') + u" WHERE rowid=?"_qs;
  update.values << key;
  return update;
}

}  // namespace

bool MergeTable::Read() {
  // The rows of one series stand together and share one text.
  QByteArray bytes;
  QString guid;
  return store_.ForEachRow({ReadSql(), {}}, [&](const StoreRow& row) {
    const QUtf8StringView stored = row.Utf8(RowGuid);
    if (stored != QUtf8StringView(bytes)) {
      bytes = QByteArray(stored.data(), stored.size());
      guid = StripAtNul(stored.toString());
    }
    Take(RowOf(row, guid));
    return true;
  });
}

void MergeTable::Take(Row row) {
  Row& kept = rows_.emplace_back(std::move(row));
  ++size_;
  const QString& guid = kept.record.guid;
  if (search_ && !byGuid_.contains(guid)) search_->Add(guid);
  byGuid_[guid].push_back(&kept);
}

void MergeTable::Leave(Row& row) {
  std::erase(byGuid_[row.record.guid], &row);
  --size_;
}

std::vector<MergeTable::Row*> MergeTable::WithGuid(const QString& guid) const {
  std::vector<Row*> rows;
  const auto named = byGuid_.constFind(guid);
  if (guid.isEmpty() || named == byGuid_.constEnd()) return rows;
  std::copy_if(named->begin(), named->end(), std::back_inserter(rows),
               [](const Row* row) { return row->record.status != StatusOccurrence; });
  return InOrder(std::move(rows));
}

std::vector<MergeTable::Row*> MergeTable::OfSeries(const QString& guidOrBase) {
  const QString base = SeriesBase(guidOrBase);
  if (base.isEmpty()) return {};
  if (!search_) {
    search_.emplace();
    for (auto named = byGuid_.keyBegin(); named != byGuid_.keyEnd(); ++named) search_->Add(*named);
  }
  std::vector<Row*> rows;
  for (const QString& guid : search_->Containing(base)) {
    const std::vector<Row*>& named = byGuid_[guid];
    rows.insert(rows.end(), named.begin(), named.end());
  }
  return InOrder(std::move(rows));
}

bool MergeTable::Insert(const ScheduleRecord& record) {
  if (!store_.Insert(record)) return false;
  // A value of its own, lest the answer be taken for that of another time.
  const auto key = store_.Number({u"SELECT last_insert_rowid()+?"_qs, {0}});
  if (!key) return false;
  Row row{*key, record};
  row.record.recur.clear();
  Take(std::move(row));
  return true;
}

bool MergeTable::Update(Row& row, const ScheduleRecord& changed) {
  const auto update = UpdateOf(row.key, row.record, changed);
  // A title that ends in blanks counts as changed although it stands there already.
  if (!update) return true;
  if (!store_.Execute(*update)) return false;
  Row taken{row.key, changed};
  taken.record.recur.clear();
  if (changed.guid == row.record.guid) {
    row = std::move(taken);
    return true;
  }
  Leave(row);
  Take(std::move(taken));
  return true;
}

bool MergeTable::Delete(Row& row) {
  if (!store_.Execute({u"DELETE FROM schedule WHERE rowid=?"_qs, {row.key}})) return false;
  Leave(row);
  return true;
}

}  // namespace talnik
