#include "store/SeriesWatch.h"

#include <QtGlobal>

#include <sqlite3.h>

namespace talnik {

namespace {

/// With more than this, all of the rows are as quickly looked at.
constexpr qsizetype kMostSeries = 200;

bool IsOfSeries(int status) {
  return status == 1 || status == 2 || status == 8 || status == 9;
}

int ColumnPlace(sqlite3* db, const char* name) {
  int place = -1;
  sqlite3_stmt* columns = nullptr;
  sqlite3_prepare_v2(db, "SELECT cid FROM pragma_table_info('schedule') WHERE lower(name)=?", -1, &columns, nullptr);
  sqlite3_bind_text(columns, 1, name, -1, SQLITE_STATIC);
  if (sqlite3_step(columns) == SQLITE_ROW) place = sqlite3_column_int(columns, 0);
  sqlite3_finalize(columns);
  return place;
}

}  // namespace

void SeriesWatch::Attach(sqlite3* db) {
  known_ = false;
  statusColumn_ = ColumnPlace(db, "status");
  guidColumn_ = ColumnPlace(db, "guid");
  if (statusColumn_ >= 0 && guidColumn_ >= 0) sqlite3_preupdate_hook(db, OnWrite, this);
}

qint64 SeriesWatch::Mark() {
  guids_.clear();
  last_.clear();
  known_ = statusColumn_ >= 0 && guidColumn_ >= 0;
  return ++mark_;
}

std::optional<QSet<QString>> SeriesWatch::Since(qint64 mark) const {
  if (!known_ || mark != mark_) return {};
  QSet<QString> guids;
  for (const QByteArray& guid : guids_) guids.insert(QString::fromUtf8(guid));
  return guids;
}

void SeriesWatch::OnWrite(void* watch, sqlite3* db, int operation, const char* database, const char* table,
                          qint64 /*oldKey*/, qint64 /*newKey*/) {
  auto* self = static_cast<SeriesWatch*>(watch);
  if (!self->known_ || qstrcmp(database, "main") != 0 || qstricmp(table, "schedule") != 0) return;
  const auto note = [&](auto valueOf) {
    sqlite3_value* status = nullptr;
    sqlite3_value* guid = nullptr;
    if (valueOf(db, self->statusColumn_, &status) != SQLITE_OK || !IsOfSeries(sqlite3_value_int(status))) return;
    if (valueOf(db, self->guidColumn_, &guid) == SQLITE_OK) self->Note(guid);
  };
  if (operation != SQLITE_INSERT) note(sqlite3_preupdate_old);
  if (operation != SQLITE_DELETE) note(sqlite3_preupdate_new);
}

void SeriesWatch::Note(sqlite3_value* guid) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(guid));
  const auto bytes = QByteArray::fromRawData(text ? text : "", text ? sqlite3_value_bytes(guid) : 0);
  if (!last_.isNull() && bytes == last_) return;
  last_ = QByteArray(bytes.constData(), bytes.size());
  guids_.insert(last_);
  if (guids_.size() > kMostSeries) known_ = false;
}

}  // namespace talnik
