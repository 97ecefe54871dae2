#pragma once

#include "store/ScheduleRecord.h"

#include <QUtf8StringView>

struct sqlite3_stmt;

namespace talnik {

/// One row of a statement, read column by column and counted from 0, without making a record of it. It lives until the
/// next row.
class StoreRow {
 public:
  explicit StoreRow(sqlite3_stmt* statement) : statement_(statement) {}

  bool IsNull(int column) const;
  qint64 Number(int column) const;  ///< 0 for NULL
  std::optional<Date> Moment(int column) const;
  QUtf8StringView Utf8(int column) const;  ///< the stored bytes; empty for NULL
  QString Text(int column) const;          ///< empty for NULL

 private:
  sqlite3_stmt* statement_;
};

}  // namespace talnik
