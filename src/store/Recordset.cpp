#include "store/Recordset.h"

#include "store/StoreImpl.h"

#include <algorithm>

namespace talnik {

namespace {

constexpr qint64 kGone = 0;  // rows are numbered from 1

/// The same rows, but for each only its number in the file.
Statement KeysOf(Statement statement) {
  constexpr QStringView head = u"SELECT *";
  if (statement.sql.startsWith(head)) statement.sql.replace(0, head.size(), u"SELECT rowid"_qs);
  return statement;
}

}  // namespace

Recordset::Recordset(Store& store) : store_(store), file_(store.impl_->filesSeen) {}

std::unique_ptr<Recordset> Recordset::Open(Store& store, const Statement& statement) {
  if (!store.Open()) return nullptr;
  std::unique_ptr<Recordset> recordset(new Recordset(store));
  const bool read = store.ForEachRow(KeysOf(statement), [&](const StoreRow& row) {
    recordset->keys_.push_back(row.Number(0));
    return true;
  });
  if (!read) return nullptr;
  recordset->MoveFirst();
  return recordset;
}

qsizetype Recordset::RecordCount() const {
  return Size() - goneCount_;
}

qsizetype Recordset::AbsolutePosition() const {
  if (!HasCurrent()) return -1;
  return position_ - (goneCount_ == 0 ? 0 : std::count(keys_.begin(), keys_.begin() + position_, kGone));
}

bool Recordset::Bof() const {
  return unreadable_ || position_ < 0 || (!HasCurrent() && RecordCount() == 0);
}

bool Recordset::Eof() const {
  return unreadable_ || position_ >= Size() || (!HasCurrent() && RecordCount() == 0);
}

const ScheduleRecord& Recordset::Row() const {
  return row_;
}

void Recordset::MarkGone(qsizetype position) {
  keys_[static_cast<std::size_t>(position)] = kGone;
  ++goneCount_;
}

Recordset::Found Recordset::Read(qsizetype position, ScheduleRecord& row) {
  const qint64 key = keys_[static_cast<std::size_t>(position)];
  if (key == kGone) return Found::Gone;
  if (!store_.Open() || store_.impl_->filesSeen != file_) return Found::Unreadable;
  bool there = false;
  const Statement oneRow{u"SELECT * FROM schedule WHERE rowid=?"_qs, {key}};
  const bool read = store_.ForEach(oneRow, [&](const ScheduleRecord& record) {
    row = record;
    there = true;
    return false;
  });
  if (!read) return Found::Unreadable;
  if (!there) MarkGone(position);
  return there ? Found::Yes : Found::Gone;
}

/// Makes the row at `position` current or, where it is gone, the next one in the direction of `step` that is there.
void Recordset::Settle(qsizetype position, int step) {
  ScheduleRecord row;
  for (; position >= 0 && position < Size(); position += step) {
    const Found found = Read(position, row);
    unreadable_ = found == Found::Unreadable;
    if (unreadable_) return;
    if (found == Found::Yes) break;
  }
  unreadable_ = false;
  position_ = position;
  row_ = HasCurrent() ? row : ScheduleRecord();
}

void Recordset::MoveFirst() {
  Settle(0, 1);
}

void Recordset::MoveLast() {
  Settle(Size() - 1, -1);
}

void Recordset::MoveNext() {
  if (position_ < Size()) Settle(position_ + 1, 1);
}

void Recordset::MovePrevious() {
  if (position_ >= 0) Settle(position_ - 1, -1);
}

bool Recordset::FindFirst(const std::function<bool(const ScheduleRecord&)>& criterion) {
  ScheduleRecord row;
  for (qsizetype position = 0; position < Size(); ++position) {
    const Found found = Read(position, row);
    if (found == Found::Unreadable) return false;
    if (found == Found::Gone || !criterion(row)) continue;
    unreadable_ = false;
    position_ = position;
    row_ = row;
    return true;
  }
  return false;
}

bool Recordset::FindRowOf(const Recordset& other) {
  if (!other.MayWrite() || other.file_ != file_) return false;
  const auto key = std::find(keys_.begin(), keys_.end(), other.keys_[static_cast<std::size_t>(other.position_)]);
  const auto position = static_cast<qsizetype>(key - keys_.begin());
  ScheduleRecord row;
  if (key == keys_.end() || Read(position, row) != Found::Yes) return false;
  unreadable_ = false;
  position_ = position;
  row_ = row;
  return true;
}

bool Recordset::MayWrite() const {
  return HasCurrent() && keys_[static_cast<std::size_t>(position_)] != kGone && store_.impl_->filesSeen == file_;
}

bool Recordset::Update(const ScheduleRecord& changed) {
  if (!HasCurrent()) return false;
  if (!MayWrite()) return store_.impl_->Failed(SQLITE_NOTFOUND);
  const ScheduleRecord cut = CutToColumns(changed);
  ScheduleRecord row;
  // Nothing is written for nothing, but the row must be there.
  if (cut == row_) return Read(position_, row) == Found::Yes;
  if (!store_.impl_->Update(keys_[static_cast<std::size_t>(position_)], row_, cut)) return false;
  if (Read(position_, row) == Found::Yes) row_ = row;
  return true;
}

bool Recordset::AddNew(const ScheduleRecord& record) {
  if (store_.impl_->filesSeen != file_) return store_.impl_->Failed(SQLITE_NOTFOUND);
  const auto key = store_.impl_->Insert(record);
  if (key) keys_.push_back(*key);
  return key.has_value();
}

bool Recordset::Delete() {
  if (!MayWrite()) return false;
  if (!store_.impl_->Delete(keys_[static_cast<std::size_t>(position_)])) return false;
  MarkGone(position_);
  return true;
}

}  // namespace talnik
