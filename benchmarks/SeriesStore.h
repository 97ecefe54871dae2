#pragma once

#include "RawRows.h"
#include "recurrence/RecurrPopulate.h"
#include "store/Store.h"
#include "store/Template.h"
#include "store/Text.h"

#include <QFile>

#include <functional>

namespace talnik::bench {

inline const Date kSeriesNow = *Date::FromParts(2024, 1, 1, 8);

inline ScheduleRecord SeriesRoot(int number, const QString& rule) {
  ScheduleRecord root;
  root.apptime = *Date::FromParts(2024, 1, 2, 9 + number % 12, number % 60);
  root.appdur = DateAdd(DateUnit::Minute, 45, *root.apptime);
  root.appointment = QStringLiteral("Pravidelná schůzka číslo %1").arg(number);
  root.alarm = true;
  root.alarmtime = DateAdd(DateUnit::Minute, -15, *root.apptime);
  root.status = StatusRoot;
  root.guid = NewGuidText();
  root.recur = rule;
  return root;
}

/// A store of series and the rows that they have spawned.
class SeriesStore {
 public:
  SeriesStore(const QString& path, int series, const std::function<ScheduleRecord(int number)>& root) : store_(path) {
    QFile::remove(path);
    Check(CreateStore(path), "create");
    const auto fill = [&] {
      for (int i = 0; i < series; ++i) Check(store_.Insert(root(i)), "root");
      return true;
    };
    Check(store_.InTransaction(fill), "roots");
    Rebuild();
  }

  const QString& Path() const { return store_.Path(); }
  void Rebuild() { Check(RebuildOccurrences(store_, {.now = kSeriesNow, .biases = {}}), "rebuild"); }
  void Run(const char* sql) { Check(store_.Execute({QString::fromUtf8(sql), {}}), sql); }
  void Close() { store_.Close(); }
  /// Afterwards nothing is known of the rows.
  void OpenAnew() {
    store_.Close();
    Check(store_.Open(), "open");
  }
  long long Occurrences() {
    return store_.Number({QStringLiteral("SELECT count(*) FROM schedule WHERE status=1"), {}}).value();
  }

 private:
  Store store_;
};

}  // namespace talnik::bench
