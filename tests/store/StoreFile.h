#pragma once

#include "store/Recordset.h"
#include "store/Statements.h"
#include "store/Store.h"
#include "store/Template.h"

#include <QDir>
#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

namespace talnik::test {

inline Date At(const QString& text) {
  return CDate(text, Date()).value();
}

/// A record by its texts; an empty end is none.
inline ScheduleRecord Row(const QString& text, const QString& start, const QString& end = {},
                          std::optional<int> status = StatusSingle) {
  ScheduleRecord row;
  row.appointment = text;
  row.apptime = At(start);
  if (!end.isEmpty()) row.appdur = At(end);
  row.status = status;
  return row;
}

/// A store of its own for each test.
class StoreFile : public testing::Test {
 protected:
  StoreFile() {
    EXPECT_TRUE(CreateStore(path));
    store.WriteFailed = [this](const QString& what) { told << what; };
  }

  /// The appointments that a statement finds, in its order.
  QStringList Texts(const Statement& statement) {
    QStringList texts;
    const bool read = store.ForEach(statement, [&texts](const ScheduleRecord& row) {
      texts << row.appointment;
      return true;
    });
    return read ? texts : QStringList(u"(unreadable)"_qs);
  }
  std::string Found(const Statement& statement) { return Texts(statement).join(u' ').toStdString(); }

  qint64 Count() { return store.Number(statements::CountAll()).value_or(-1); }

  std::unique_ptr<Recordset> Browse(const Statement& statement = statements::Visible()) {
    auto rows = Recordset::Open(store, statement);
    EXPECT_NE(rows, nullptr);
    return rows;
  }

  QTemporaryDir folder;
  QString path = folder.filePath(u"talnik.MDB"_qs);
  Store store{path};
  QStringList told;  ///< failures
};

}  // namespace talnik::test
