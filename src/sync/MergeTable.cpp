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

/// Once so many rows are written, and they are a good part of the table, it is cheaper to make the indexes anew.
constexpr qsizetype kFewWrites = 5000;
constexpr qsizetype kGoodPart = 8;

MergeTable::Row RowOf(const StoreRow& row) {
  MergeTable::Row result;
  result.key = row.Number(RowKey);
  if (!row.IsNull(RowStatus)) result.status = static_cast<int>(row.Number(RowStatus));
  result.start = row.Moment(RowStart);
  result.reference = row.Moment(RowReference);
  result.alarm = row.Moment(RowAlarm);
  if (result.status == StatusOccurrence) return result;
  result.title = row.Text(RowTitle);
  result.end = row.Moment(RowEnd);
  return result;
}

MergeTable::Row RowOf(const ScheduleRecord& record, qint64 key) {
  return {.key = key,
          .title = record.appointment,
          .start = record.apptime,
          .end = record.appdur,
          .reference = record.reftime,
          .alarm = record.alarmtime,
          .status = record.status};
}

/// ORDER BY apptime,status,rowid; what has no value comes first.
MergeTable::Rows InOrder(MergeTable::Rows rows) {
  std::sort(rows.begin(), rows.end(), [](const MergeTable::Row* a, const MergeTable::Row* b) {
    return std::tie(a->start, a->status, a->key) < std::tie(b->start, b->status, b->key);
  });
  return rows;
}

QVariant MomentValue(const std::optional<Date>& moment) {
  return moment ? QVariant(moment->Serial()) : QVariant();
}

/// Sets the columns in which the rows differ; nothing where they do not.
std::optional<Statement> UpdateOf(const MergeTable::Row& old, const MergeTable::Row& changed) {
  Statement update;
  QStringList assignments;
  const auto set = [&](const char16_t* assignment, bool differs, const QVariant& value) {
    if (!differs) return;
    assignments << QString::fromUtf16(assignment);
    update.values << value;
  };
  set(u"appointment=?", old.title != changed.title, changed.title);
  set(u"apptime=?", old.start != changed.start, MomentValue(changed.start));
  set(u"appdur=?", old.end != changed.end, MomentValue(changed.end));
  set(u"alarmtime=?", old.alarm != changed.alarm, MomentValue(changed.alarm));
  if (assignments.isEmpty()) return {};
  update.sql = u"UPDATE schedule SET "_qs + assignments.join(u',') + u" WHERE rowid=?"_qs;
  update.values << old.key;
  return update;
}

}  // namespace

bool MergeTable::Read() {
  for (Guid& guid : guids_) guid.first = nullptr;
  rows_.clear();
  size_ = 0;
  // The rows of one series stand together.
  QByteArray bytes;
  Guid* guid = nullptr;
  return store_.ForEachRow({ReadSql(), {}}, [&](const StoreRow& row) {
    const QUtf8StringView stored = row.Utf8(RowGuid);
    if (!guid || stored != QUtf8StringView(bytes)) {
      bytes = QByteArray(stored.data(), stored.size());
      guid = &GuidOf(StripAtNul(stored.toString()));
    }
    Enter(Take(RowOf(row)), *guid);
    return true;
  });
}

MergeTable::Guid& MergeTable::GuidOf(const QString& text) {
  Guid*& guid = guidOf_[text];
  if (!guid) {
    guids_.push_back({.text = text});
    guid = &guids_.back();
  }
  return *guid;
}

MergeTable::Row& MergeTable::Take(Row row) {
  ++size_;
  return rows_.emplace_back(std::move(row));
}

void MergeTable::Enter(Row& row, Guid& guid) {
  if (search_) Search(guid);
  row.guid = &guid;
  row.next = guid.first;
  guid.first = &row;
}

void MergeTable::Leave(Row& row) {
  Row** link = &row.guid->first;
  while (*link != &row) link = &(*link)->next;
  *link = row.next;
}

void MergeTable::Search(Guid& guid) {
  if (!guid.searched && !guid.text.isEmpty()) search_->Add(guid.text);
  guid.searched = true;
}

MergeTable::Rows MergeTable::WithGuid(const QString& guid) const {
  Rows rows;
  const Guid* named = guidOf_.value(guid);
  if (guid.isEmpty() || !named) return rows;
  for (Row* row = named->first; row; row = row->next) {
    if (row->status != StatusOccurrence) rows.push_back(row);
  }
  return InOrder(std::move(rows));
}

MergeTable::Rows MergeTable::OfSeries(const QString& guidOrBase) {
  const QString base = SeriesBase(guidOrBase);
  if (base.isEmpty()) return {};
  if (!search_) {
    search_.emplace();
    for (Guid& guid : guids_) Search(guid);
  }
  Rows rows;
  for (const QString& guid : search_->Containing(base)) {
    for (Row* row = GuidOf(guid).first; row; row = row->next) rows.push_back(row);
  }
  return InOrder(std::move(rows));
}

MergeTable::Rows MergeTable::Unnamed() const {
  Rows rows;
  for (const Guid& guid : guids_) {
    for (Row* row = guid.named ? nullptr : guid.first; row; row = row->next) rows.push_back(row);
  }
  return InOrder(std::move(rows));
}

bool MergeTable::Write(const Statement& statement) {
  return store_.Execute(statement) && Written();
}

bool MergeTable::Written() {
  ++writes_;
  return indexes_.AreAside() || writes_ < kFewWrites || writes_ < size_ / kGoodPart || indexes_.PutAside();
}

bool MergeTable::Finish() {
  return !indexes_.AreAside() || indexes_.MakeAgain();
}

bool MergeTable::Insert(const ScheduleRecord& record) {
  if (!store_.Insert(record)) return false;
  // A value of its own, lest the answer be taken for that of another time.
  const auto key = store_.Number({u"SELECT last_insert_rowid()+?"_qs, {0}});
  if (!key) return false;
  Enter(Take(RowOf(record, *key)), GuidOf(record.guid));
  return Written();
}

bool MergeTable::Update(Row& row, const Row& changed) {
  const auto update = UpdateOf(row, changed);
  // A title that ends in blanks counts as changed although it stands there already.
  if (!update) return true;
  row = changed;
  return Write(*update);
}

bool MergeTable::MakeRoot(Row& row, const QString& rule) {
  row.status = StatusRoot;
  const QVariant recur = rule.isEmpty() ? QVariant() : CutToSize(rule, RecurSize);
  return Write({u"UPDATE schedule SET recur=?,status=? WHERE rowid=?"_qs, {recur, int(StatusRoot), row.key}});
}

bool MergeTable::MakeTombstone(Row& row, const QString& guid) {
  Leave(row);
  Enter(row, GuidOf(guid));
  row.status = StatusDeleted;
  return Write({u"UPDATE schedule SET guid=?,status=? WHERE rowid=?"_qs,
                {CutToSize(guid, GuidSize), int(StatusDeleted), row.key}});
}

bool MergeTable::Delete(Row& row) {
  Leave(row);
  --size_;
  return Write({u"DELETE FROM schedule WHERE rowid=?"_qs, {row.key}});
}

}  // namespace talnik
