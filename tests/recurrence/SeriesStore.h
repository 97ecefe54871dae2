#pragma once

#include "recurrence/EditSeries.h"
#include "store/Recordset.h"
#include "store/Statements.h"
#include "store/Store.h"
#include "store/Template.h"
#include "store/Text.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace talnik::test {

inline Date Moment(const char* text) {
  const auto date = CDate(QString::fromLatin1(text), Date());
  EXPECT_TRUE(date) << text;
  return date.value_or(Date());
}

/// Nothing for an empty text.
inline std::optional<Date> MaybeMoment(const char* text) {
  return *text ? std::optional(Moment(text)) : std::nullopt;
}

/// All rows by start; where starts are equal, as they were added.
inline Statement ByStart() {
  return {u"SELECT * FROM schedule ORDER BY apptime,rowid"_qs, {}};
}

/// What the editor holds when all of a series is to move by so many minutes and to last half an hour longer.
inline RootEdit Shifted(const ScheduleRecord& row, const QString& title, int minutes) {
  return {.title = title,
          .start = DateAdd(DateUnit::Minute, minutes, *row.apptime).value(),
          .end = DateAdd(DateUnit::Minute, minutes + 30, *row.appdur),
          .rule = row.recur.trimmed(),
          .guid = row.guid,
          .status = row.status,
          .origStart = row.apptime,
          .origEnd = row.appdur,
          .origAlarm = row.alarmtime};
}

/// A store of its own, in memory where the machine has a place for that, and a clock.
struct SeriesStore {
  QTemporaryDir folder{QFile::exists(u"/dev/shm"_qs) ? u"/dev/shm/talnik-XXXXXX"_qs : u"talnik-XXXXXX"_qs};
  QString path = folder.filePath(u"talnik.MDB"_qs);
  Store store{path};
  Store watcher{path};  ///< another program that has the file open
  SpawnTime time{.now = Moment("1.1.2024 8:00"), .biases = {-60, 0, -60, false}};
  QString id = u"0123456789abcdef0123456789abcdef"_qs;

  SeriesStore() { EXPECT_TRUE(CreateStore(path)); }

  ScheduleRecord Root(const char* start, const char* rule) const {
    ScheduleRecord root;
    root.appointment = u"Cvičení"_qs;
    root.apptime = Moment(start);
    root.appdur = DateAdd(DateUnit::Hour, 1, *root.apptime);
    root.recur = QString::fromLatin1(rule);
    root.status = StatusRoot;
    root.guid = id;
    return root;
  }

  /// Writes a row of the series: an exception or a tombstone.
  void AddMember(int status, const QString& guid, const char* start, const char* reftime = nullptr) {
    ScheduleRecord row = Root(start, " RRULE:FREQ=DAILY INTERVAL=1");
    row.status = status;
    row.guid = guid;
    if (reftime) row.reftime = Moment(reftime);
    EXPECT_TRUE(store.Insert(row));
  }

  void AddRoot(const ScheduleRecord& root) {
    EXPECT_TRUE(store.Insert(root));
    EXPECT_TRUE(Rebuild());
  }

  bool Rebuild() { return RebuildOccurrences(store, time); }

  /// Adds the rows of a series.
  bool Spawn(Store& to, const ScheduleRecord& root) const {
    bool addFirst = true;
    const SpawnSeries series{
        root.appointment, root.apptime.value_or(Date()), root.appdur, root.alarmtime, root.recur, {}, root.guid};
    return RecurrPopulate([&to](const ScheduleRecord& row) { return to.Insert(row); }, series, addFirst, time);
  }

  std::vector<ScheduleRecord> Rows(const Statement& statement = ByStart()) {
    std::vector<ScheduleRecord> rows;
    EXPECT_TRUE(store.ForEach(statement, [&rows](const ScheduleRecord& row) {
      rows.push_back(row);
      return true;
    }));
    return rows;
  }

  /// The rows of status 1, each a line with all it holds. What no root names has a guid that nobody can foretell.
  std::string Spawned() { return SpawnedIn(store); }

  /// What they should be: dropped and spawned anew, step by step, in a copy of the file.
  std::string SpawnedAnew() {
    const QString copy = folder.filePath(u"copy.MDB"_qs);
    QFile::remove(copy);
    EXPECT_TRUE(QFile::copy(path, copy));
    Store anew(copy);
    EXPECT_TRUE(anew.InTransaction([&] {
      anew.Execute(statements::DeleteOccurrences());
      for (const ScheduleRecord& root : Rows(statements::RootsWithRule())) {
        Spawn(anew, root);
      }
      for (const ScheduleRecord& row : Rows(statements::Exceptions())) {
        anew.Execute(statements::DeleteOccurrencesOfDay(row.guid, row.reftime ? *row.reftime : *row.apptime));
      }
      return true;
    }));
    return SpawnedIn(anew);
  }

  static std::string SpawnedIn(Store& from) {
    QSet<QString> roots;
    from.ForEach(statements::Roots(), [&roots](const ScheduleRecord& root) {
      roots.insert(CutToSize(root.guid, GuidSize));
      return true;
    });
    QStringList lines;
    from.ForEach(statements::Occurrences(), [&](const ScheduleRecord& row) {
      QStringList line;
      for (const auto& moment : {row.apptime, row.appdur, row.reftime, row.alarmtime, row.spawntime}) {
        line << (moment ? DateText(*moment) : u"-"_qs);
      }
      line << QString::number(row.alarm) << QString::number(row.alarmfired) << row.appointment << row.wav << row.recur
           << (roots.contains(row.guid) ? row.guid : u"?"_qs);
      lines << line.join(u'|');
      return true;
    });
    lines.sort();
    return lines.join(u'\n').toStdString();
  }

  /// "status start" of the rows, by start.
  std::string Summary(const Statement& statement = ByStart()) {
    QStringList lines;
    for (const ScheduleRecord& row : Rows(statement)) {
      lines << QString::number(row.status.value_or(-1)) + u' ' + DateText(row.apptime.value_or(Date()));
    }
    return lines.join(u", "_qs).toStdString();
  }

  std::string Occurrences() {
    return Summary({u"SELECT * FROM schedule WHERE status=1 ORDER BY apptime,rowid"_qs, {}});
  }

  /// Another number whenever the store has written to its file.
  qint64 Writes() { return Numbers(watcher, u"PRAGMA data_version"_qs).at(0); }

  std::vector<qint64> Keys() { return Numbers(store, u"SELECT rowid FROM schedule ORDER BY rowid"_qs); }

  static std::vector<qint64> Numbers(Store& from, const QString& sql) {
    std::vector<qint64> numbers;
    EXPECT_TRUE(from.ForEachRow({sql, {}}, [&numbers](const StoreRow& row) {
      numbers.push_back(row.Number(0));
      return true;
    }));
    return numbers;
  }

  /// A recordset that stands on the first row of this status.
  std::unique_ptr<Recordset> StandingOn(int status) {
    auto rows = Recordset::Open(store, ByStart());
    EXPECT_TRUE(rows->FindFirst([status](const ScheduleRecord& row) { return row.status == status; }));
    return rows;
  }

  /// From now on no row of status 1 can be added.
  void RefuseInserts() {
    EXPECT_TRUE(
        store.Execute({u"CREATE TRIGGER full BEFORE INSERT ON schedule WHEN NEW.status=1 BEGIN SELECT "
                       u"RAISE(ABORT,'full'); END"_qs,
                       {}}));
  }

  void Touch(const QString& file) {
    QFile note(file);
    EXPECT_TRUE(note.open(QIODevice::WriteOnly));
  }
};

}  // namespace talnik::test
