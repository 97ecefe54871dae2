#include "recurrence/SeriesStore.h"

#include <QRandomGenerator>

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <functional>

namespace talnik::test {

namespace {

/// Runs `act` in front of one statement of whatever connection is made while it lives.
class Interposed {
 public:
  explicit Interposed(int statement, std::function<void()> act) : left_(statement), act_(std::move(act)) {
    living = this;
    sqlite3_auto_extension(reinterpret_cast<void (*)()>(Watch));
  }
  ~Interposed() {
    sqlite3_cancel_auto_extension(reinterpret_cast<void (*)()>(Watch));
    living = nullptr;
  }
  Interposed(const Interposed&) = delete;
  Interposed& operator=(const Interposed&) = delete;

  bool HasActed() const { return left_ < 0; }

 private:
  static int Watch(sqlite3* db, char**, const sqlite3_api_routines*) {
    return sqlite3_trace_v2(
        db, SQLITE_TRACE_STMT,
        [](unsigned, void*, void*, void*) {
          if (living && --living->left_ == -1) living->act_();
          return 0;
        },
        nullptr);
  }

  inline static Interposed* living = nullptr;
  int left_;
  std::function<void()> act_;
};

const std::array<const char*, 7> kRules = {"FREQ=DAILY COUNT=9",
                                           "RRULE:FREQ=WEEKLY BYDAY=MO,WE INTERVAL=1 COUNT=5",
                                           "RRULE:FREQ=MONTHLY BYDAY=2TU INTERVAL=1 ",
                                           "FREQ=DAILY INTERVAL=2 UNTIL=20240120T090000Z",
                                           "FREQ=DAILY INTERVAL=5 COUNT=1",
                                           "FREQ=YEARLY",
                                           " "};

/// Whoever may write to the file writes whatever can be written, in all ways in which a write can go on or come to
/// nothing, while the clock goes to and fro.
class Storm {
 public:
  explicit Storm(int seed) : random_(static_cast<quint32>(seed)) {
    for (int i = 0; i < 3; ++i) {
      ScheduleRecord root = series_.Root("2.1.2024 9:00", kRules.at(static_cast<std::size_t>(i)));
      root.guid = guids_.at(i * 2);
      EXPECT_TRUE(series_.store.Insert(root));
      series_.AddMember(i == 1 ? StatusChanged : StatusDeleted, guids_.at(i * 2) + u"_20240108"_qs, "8.1.2024 10:00");
    }
  }

  const QStringList& Diary() const { return diary_; }

  void Step() {
    using Act = void (Storm::*)();
    static constexpr std::array<Act, 7> acts = {&Storm::Write,        &Storm::Write,           &Storm::Write,
                                                &Storm::WriteAndUndo, &Storm::ForeignerWrites, &Storm::MoveTheClock,
                                                &Storm::CloseTheStore};
    (this->*acts.at(static_cast<std::size_t>(Below(acts.size()))))();
    if (Below(3) > 0) Compare();
  }

 private:
  int Below(int limit) { return static_cast<int>(random_.bounded(limit)); }

  /// A statement that writes to one row.
  Statement Any() {
    const std::array<Statement, 11> changes = {{
        {u"SET apptime=apptime+?"_qs, {(Below(9) - 4) * 0.25}},
        {u"SET status=?"_qs, {std::array{0, 1, 1, 2, 8, 9}.at(static_cast<std::size_t>(Below(6)))}},
        {u"SET guid=?"_qs, {guids_.at(Below(static_cast<int>(guids_.size())))}},
        {u"SET guid=NULL"_qs, {}},
        {u"SET reftime=iif(?,NULL,apptime-1)"_qs, {Below(2)}},
        {u"SET recur=?"_qs, {QString::fromLatin1(kRules.at(static_cast<std::size_t>(Below(kRules.size()))))}},
        {u"SET alarmtime=apptime-0.1,alarm=?"_qs, {Below(2)}},
        {u"SET appdur=apptime+?,alarmfired=1"_qs, {Below(3) * 0.5}},
        {u"SET appointment=?,wav='n.wav'"_qs, {QString::number(Below(100))}},
        {u"DELETE"_qs, {}},
        {u"INSERT"_qs, {}},
    }};
    Statement change = changes.at(static_cast<std::size_t>(Below(changes.size())));
    const QString row =
        u" WHERE rowid=(SELECT rowid FROM schedule WHERE status<>1 OR %2 ORDER BY rowid*%1%997 LIMIT 1)"_qs
            .arg(Below(996) + 1)
            .arg(Below(2));
    if (change.sql == u"DELETE"_qs) {
      change.sql += u" FROM schedule"_qs + row;
    } else if (change.sql == u"INSERT"_qs) {
      change.sql += u" INTO schedule SELECT * FROM schedule"_qs + row;
    } else {
      change.sql = u"UPDATE schedule "_qs + change.sql + row;
    }
    diary_ << change.sql;
    return change;
  }

  void Write() { EXPECT_TRUE(series_.store.Execute(Any())); }
  void ForeignerWrites() {
    diary_ << u"foreign:"_qs;
    EXPECT_TRUE(series_.watcher.Execute(Any()));
  }

  void WriteAndUndo() {
    diary_ << u"undone:"_qs;
    const bool fails = Below(2) == 0;
    EXPECT_FALSE(series_.store.InTransaction([&] {
      Write();
      EXPECT_TRUE(Below(2) == 0 || series_.Rebuild());
      Write();
      return fails && !series_.store.Execute({u"INSERT INTO schedule(appointment) VALUES(NULL)"_qs, {}});
    }));
  }

  void MoveTheClock() {
    series_.time.now = DateAdd(DateUnit::Hour, Below(100) - 30, series_.time.now).value();
    diary_ << DateText(series_.time.now);
  }

  void CloseTheStore() {
    diary_ << u"close"_qs;
    series_.store.Close();
  }

  void Compare() {
    diary_ << u"rebuild"_qs;
    EXPECT_TRUE(series_.Rebuild());
    EXPECT_EQ(series_.Spawned(), series_.SpawnedAnew());
  }

  SeriesStore series_;
  QRandomGenerator random_;
  QStringList guids_{
      series_.id,        series_.id + u"_20240103T080000Z"_qs, QString(32, u'e'),  u"0123*cdef_x"_qs,
      u"b@elsewhere"_qs, u"b@elsewhere_20240105"_qs,           QString(260, u'y'), QString(260, u'y') + u"_20240106"_qs,
      QString()};
  QStringList diary_;
};

}  // namespace

TEST(RebuildStorm, LeavesWhatSpawningAnewWouldLeave) {
  // TALNIK_STORMS=500 looks longer.
  const int seeds = std::max(6, qEnvironmentVariableIntValue("TALNIK_STORMS"));
  for (int seed = 1; seed <= seeds; ++seed) {
    Storm storm(seed);
    for (int step = 0; step < 60; ++step) {
      storm.Step();
      ASSERT_FALSE(testing::Test::HasFailure())
          << "seed " << seed << ", after: " << storm.Diary().mid(storm.Diary().size() - 12).join(u"\n").toStdString();
    }
  }
}

/// Rows are found by numbers that another program can give to a row of its own before they are written.
TEST(RebuildStorm, NeverWritesOverTheRowOfAnotherProgram) {
  bool acted = true;
  for (int statement = 0; acted; ++statement) {
    SeriesStore series;
    series.AddRoot(series.Root("2.1.2024 9:00", "FREQ=DAILY COUNT=5"));
    series.store.Execute({u"UPDATE schedule SET appointment='jiné',apptime=apptime+0.1 WHERE status=9"_qs, {}});
    series.store.Close();
    bool written = false;
    const auto write = [&] {
      written = series.watcher.InTransaction([&series] {
        const QString last = u"(SELECT max(rowid) FROM schedule)"_qs;
        return series.watcher.Execute({u"DELETE FROM schedule WHERE rowid="_qs + last, {}}) &&
               series.watcher.Execute({u"INSERT INTO schedule(appointment,apptime,status) VALUES('cizí',1,0)"_qs, {}});
      });
    };
    {
      const Interposed foreigner(statement, write);
      EXPECT_TRUE(series.Rebuild());
      acted = foreigner.HasActed();
    }
    const Statement foreign{u"SELECT * FROM schedule WHERE appointment='cizí' AND status=0"_qs, {}};
    EXPECT_EQ(series.Rows(foreign).size(), written ? 1U : 0U) << statement;
    EXPECT_TRUE(series.Rebuild());
    EXPECT_EQ(series.Spawned(), series.SpawnedAnew()) << statement;
  }
}

}  // namespace talnik::test
