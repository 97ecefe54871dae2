#include "recurrence/AtRandom.h"

#include <sqlite3.h>

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

const std::array kRules = {u"FREQ=DAILY COUNT=9"_qs,
                           u"RRULE:FREQ=WEEKLY BYDAY=MO,WE INTERVAL=1 COUNT=5"_qs,
                           u"RRULE:FREQ=MONTHLY BYDAY=2TU INTERVAL=1 "_qs,
                           u"FREQ=DAILY INTERVAL=2 UNTIL=20240120T090000Z"_qs,
                           u"FREQ=DAILY INTERVAL=5 COUNT=1"_qs,
                           u"FREQ=YEARLY"_qs,
                           u" "_qs};

/// Whoever may write to the file writes whatever can be written, in all ways in which a write can go on or come to
/// nothing, while the clock goes to and fro.
struct Storm : AtRandom<SeriesStore> {
  explicit Storm(quint32) {
    for (int i = 0; i < 3; ++i) {
      ScheduleRecord root = Root("2.1.2024 9:00", "");
      root.recur = kRules.at(static_cast<std::size_t>(i));
      root.guid = guids.at(i * 2);
      store.Insert(root);
      AddMember(i == 1 ? StatusChanged : StatusDeleted, guids.at(i * 2) + u"_20240108"_qs, "8.1.2024 10:00");
    }
  }

  void Act() {
    DoOneOf<Storm>({&Storm::Write, &Storm::Write, &Storm::Write, &Storm::WriteAndUndo, &Storm::ForeignerWrites,
                    &Storm::GoOn, &Storm::CloseTheStore});
    if (Below(3) > 0) RebuildAsAnew();
  }

  /// A statement that writes to one row.
  Statement Any() {
    const std::array<Statement, 11> changes = {{
        {u"UPDATE schedule SET apptime=apptime+?"_qs, {(Below(9) - 4) * 0.25}},
        {u"UPDATE schedule SET status=?"_qs, {OneOf(std::array{0, 1, 1, 2, 8, 9})}},
        {u"UPDATE schedule SET guid=?"_qs, {OneOf(guids)}},
        {u"UPDATE schedule SET guid=NULL"_qs, {}},
        {u"UPDATE schedule SET reftime=iif(?,NULL,apptime-1)"_qs, {Below(2)}},
        {u"UPDATE schedule SET recur=?"_qs, {OneOf(kRules)}},
        {u"UPDATE schedule SET alarmtime=apptime-0.1,alarm=?"_qs, {Below(2)}},
        {u"UPDATE schedule SET appdur=apptime+?,alarmfired=1"_qs, {Below(3) * 0.5}},
        {u"UPDATE schedule SET appointment=?,wav='n.wav'"_qs, {QString::number(Below(100))}},
        {u"DELETE FROM schedule"_qs, {}},
        {u"INSERT INTO schedule SELECT * FROM schedule"_qs, {}},
    }};
    Statement change = OneOf(changes);
    change.sql += u" WHERE rowid=(SELECT rowid FROM schedule WHERE status<>1 OR %2 ORDER BY rowid*%1%997 LIMIT 1)"_qs
                      .arg(Below(996) + 1)
                      .arg(Below(2));
    Note(change.sql);
    return change;
  }

  void Write() { Must(store.Execute(Any()), u"a write goes through"_qs); }
  void ForeignerWrites() { Must(watcher.Execute(Any()), u"the write of another program goes through"_qs); }

  void WriteAndUndo() {
    Note(u"undone:"_qs);
    const bool fails = Below(2) == 0;
    const bool kept = store.InTransaction([&] {
      Write();
      Must(Below(2) == 0 || Rebuild(), u"a rebuild goes through in a transaction"_qs);
      Write();
      return fails && !store.Execute({u"INSERT INTO schedule(appointment) VALUES(NULL)"_qs, {}});
    });
    Must(!kept, u"what was given up is undone"_qs);
  }

  void GoOn() { MoveTheClock(Below(100) - 30); }

  void CloseTheStore() {
    Note(u"close"_qs);
    store.Close();
  }

  const QStringList guids{id,
                          id + u"_20240103T080000Z"_qs,
                          QString(32, u'e'),
                          u"0123*cdef_x"_qs,
                          u"b@elsewhere"_qs,
                          u"b@elsewhere_20240105"_qs,
                          QString(260, u'y'),
                          QString(260, u'y') + u"_20240106"_qs,
                          QString()};
};

}  // namespace

TEST(RebuildStorm, LeavesWhatSpawningAnewWouldLeave) {
  PlayRuns<Storm>(6, 60);
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
