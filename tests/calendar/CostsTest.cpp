#include "calendar/MainWindow.h"

#include <QPaintEvent>

#include <sqlite3.h>

namespace talnik::test {
namespace {

int& StatementsRun() {
  static int count = 0;
  return count;
}

int CountStatements(sqlite3* db, const char**, const sqlite3_api_routines*) {
  const auto count = [](unsigned, void*, void*, void*) {
    ++StatementsRun();
    return 0;
  };
  return sqlite3_trace_v2(db, SQLITE_TRACE_STMT, count, nullptr);
}

/// Of a list: the area that was painted, in lines.
class LinesPainted : public QObject {
 public:
  explicit LinesPainted(ListBox& list) : list_(list) { list.viewport()->installEventFilter(this); }

  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() != QEvent::Paint) return false;
    const QRect line = list_.visualItemRect(list_.item(0));
    for (const QRect& rect : static_cast<QPaintEvent*>(event)->region()) count += rect.height() / line.height();
    return false;
  }

  int count = 0;

 private:
  ListBox& list_;
};

using Costs = MainWindow;

/// The look at the file, the one for series of other programs, the count.
TEST_F(Costs, AKeyInTheMonthAsksOnceAndPaintsTheLinesItLeavesAndReaches) {
  sqlite3_auto_extension(reinterpret_cast<void (*)()>(CountStatements));
  Start();
  sqlite3_reset_auto_extension();
  LinesPainted painted(*main_->List1);
  const struct {
    Qt::Key key;
    int statements;
    int lines;
  } rows[] = {{Qt::Key_D, 2, 0}, {Qt::Key_Up, 3, 2}, {Qt::Key_Down, 3, 2}, {Qt::Key_PageUp, 3, 2}, {Qt::Key_D, 3, 2}};
  for (const auto& row : rows) {
    painted.count = StatementsRun() = 0;
    user_.Press(row.key);
    FormDriver::Settle();
    EXPECT_EQ(StatementsRun(), row.statements) << row.key;
    EXPECT_LE(painted.count, row.lines) << row.key;
  }
}

}  // namespace
}  // namespace talnik::test
