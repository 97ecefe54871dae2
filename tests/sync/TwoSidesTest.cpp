#include "recurrence/RuleText.h"
#include "sync/ExchangeFile.h"
#include "sync/MergeWorld.h"

#include <QRandomGenerator>

#include <map>
#include <set>

namespace talnik::test {

namespace {

/// A record as both sides know it.
struct Event {
  QString title;
  std::optional<Date> start, end, alarm;
  QString rule;
  int status = StatusSingle;
  bool operator==(const Event&) const = default;
};
using Calendar = std::map<QString, Event>;
using MaybeEvent = std::optional<Event>;
using Acts = std::vector<quint32>;

Calendar CalendarOf(const QString& text) {
  Calendar calendar;
  for (const QString& line : text.split(u"\r\n"_qs, Qt::SkipEmptyParts)) {
    const QStringList field = line.split(u';');
    const qsizetype rule = field[4].indexOf(u"RRULE"_qs);
    calendar[field[5]] = {field[0],
                          CDate(field[1], Date()),
                          CDate(field[2], Date()),
                          CDate(field[3], Date()),
                          rule < 0 ? QString() : field[4].mid(rule),
                          field[6].toInt()};
  }
  return calendar;
}

MaybeEvent In(const Calendar& calendar, const QString& id) {
  const auto found = calendar.find(id);
  return found == calendar.end() ? std::nullopt : MaybeEvent(found->second);
}

QString TextOf(const std::optional<Date>& moment) {
  return moment ? DateText(*moment) : QString();
}

QString LineOf(const QString& id, const Event& event) {
  const QString behind = u';' + id + u';' + QString::number(event.status);
  if (event.status != StatusRoot) {
    return QStringList{event.title, TextOf(event.start), TextOf(event.end), TextOf(event.alarm), event.rule}.join(
               u';') +
           behind;
  }
  const QString minutes =
      event.alarm ? QString::number((event.start->Seconds() - event.alarm->Seconds()) / 60) : QString();
  return event.title + u";;;"_qs + minutes + u";DTSTART :"_qs + MakeRuleStamp(*event.start) + u" DTEND :"_qs +
         MakeRuleStamp(*event.end) + u' ' + event.rule + behind;
}

/// What the user's side holds of an event once it has come there: a root rings at its start if at no other time, and of
/// a deleted one only that it is deleted matters.
bool Agree(const Event& calendar, const Event& local) {
  if (calendar.status == StatusDeleted) return local.status == StatusDeleted;
  Event expected = calendar;
  if (expected.status == StatusRoot && !expected.alarm) expected.alarm = expected.start;
  if (expected.status != StatusRoot) expected.rule = local.rule;
  return expected == local;
}

/// A user and a calendar that are changed at random and synchronised now and then. Each act is made from a number of
/// its own, so that others can be left out of a run.
class TwoSides {
 public:
  explicit TwoSides(quint32 zone) {
    constexpr std::array zones = {ZoneBiases{-60, 0, -60, false}, ZoneBiases{-60, 0, -60, true}, ZoneBiases{},
                                  ZoneBiases{300, 0, -60, false}};
    world_.time.biases = zones.at(zone % zones.size());
  }

  int Rounds() const { return rounds_; }

  /// What has gone wrong; empty when nothing has.
  QString Act(quint32 seed) {
    random_.seed(seed);
    using Deed = void (TwoSides::*)();
    static constexpr std::array<Deed, 11> deeds = {
        &TwoSides::UserAdds,        &TwoSides::UserChanges,     &TwoSides::UserChanges,    &TwoSides::UserDeletes,
        &TwoSides::UserEditsRoot,   &TwoSides::CalendarAdds,    &TwoSides::CalendarMoves,  &TwoSides::CalendarChanges,
        &TwoSides::CalendarChanges, &TwoSides::CalendarExcepts, &TwoSides::CalendarExcepts};
    if (Below(5) == 0) return Synchronise();
    (this->*deeds.at(static_cast<std::size_t>(Below(deeds.size()))))();
    return QString();
  }

 private:
  int Below(std::size_t limit) { return static_cast<int>(random_.bounded(static_cast<quint32>(limit))); }
  QString Title() { return u"Úkol %1"_qs.arg(Below(1000)); }

  Event AnyEvent(int status) {
    Event event{.title = Title(), .start = {}, .end = {}, .alarm = {}, .rule = {}, .status = status};
    event.start = DateAdd(DateUnit::Minute, 15 * Below(96 * 20), Moment("2.1.2024"));
    event.end = DateAdd(DateUnit::Minute, 45 * Below(3), *event.start);
    if (Below(2) == 0) event.alarm = DateAdd(DateUnit::Minute, -Below(90), *event.start);
    if (status == StatusRoot) event.rule = u"RRULE:FREQ=WEEKLY BYDAY=%1 INTERVAL=2"_qs.arg(DayCode(1 + Below(7)));
    return event;
  }

  int NewStatus(const Calendar& side) {
    const auto roots =
        std::count_if(side.begin(), side.end(), [](const auto& e) { return e.second.status == StatusRoot; });
    return roots < 3 && Below(3) == 0 ? StatusRoot : StatusSingle;
  }

  /// A recordset on any row that fits; null without one.
  std::unique_ptr<Recordset> AnyRow(const std::function<bool(const ScheduleRecord&)>& fits) {
    std::vector<ScheduleRecord> rows = world_.Rows();
    std::erase_if(rows, [&](const ScheduleRecord& row) { return !fits(row); });
    if (rows.empty()) return nullptr;
    const ScheduleRecord chosen = rows.at(static_cast<std::size_t>(Below(rows.size())));
    auto found = Recordset::Open(world_.store, ByStart());
    found->FindFirst([&chosen](const ScheduleRecord& row) { return row == chosen; });
    return found;
  }

  bool IsMoved(const QString& id) const { return moved_.contains(SeriesBase(id)); }
  void Touch(const QString& id) { touched_.insert(SeriesBase(id)); }
  /// What a record is moved by on one side the other does not know before the next synchronisation, so that nothing
  /// else may happen to it.
  bool MayMove(const QString& id) {
    if (touched_.contains(SeriesBase(id))) return false;
    Touch(id);
    moved_.insert(SeriesBase(id));
    return true;
  }

  void UserAdds() {
    const Event event = AnyEvent(NewStatus(CalendarOf(Exported())));
    ScheduleRecord row;
    row.appointment = event.title;
    row.apptime = event.start;
    row.appdur = event.end;
    row.alarm = event.alarm.has_value();
    row.alarmtime = event.alarm;
    row.recur = event.rule;
    row.status = event.status;
    row.guid = QString::number(++lastId_).rightJustified(32, u'e');  // the same in each play of a run
    world_.AddRoot(row);
  }

  void UserChanges() {
    const auto rows =
        AnyRow([this](const ScheduleRecord& row) { return row.status < StatusDeleted && !IsMoved(row.guid); });
    if (!rows) return;
    ScheduleRecord row = rows->Row();
    Touch(row.guid);
    if (row.status != StatusSingle) {
      row.guid = ExceptionGuid(row.guid, *row.apptime, world_.time.biases);
      row.status = StatusChanged;
    }
    row.appointment = Title();
    if (Below(2) == 0) row.appdur = row.apptime = DateAdd(DateUnit::Minute, Below(200), *row.apptime);
    if (Below(2) == 0) row.alarmtime = row.alarmtime ? std::nullopt : row.apptime;
    row.alarm = row.alarmtime.has_value();
    EXPECT_TRUE(rows->Update(row));
  }

  void UserDeletes() {
    const bool series = Below(4) == 0;
    const auto rows = AnyRow([&](const ScheduleRecord& row) {
      return !IsMoved(row.guid) && (series ? row.status == StatusRoot : row.status < StatusDeleted);
    });
    if (!rows) return;
    Touch(rows->Row().guid);
    if (series) {
      DeleteWholeSeries(world_.store, rows->Row().guid, world_.folder.path());
    } else if (rows->Row().status == StatusSingle) {
      DeleteSingle(*rows);
    } else {
      DeleteOccurrence(world_.store, *rows, world_.time.biases);
    }
  }

  void UserEditsRoot() {
    const auto rows = AnyRow([](const ScheduleRecord& row) { return row.status == StatusOccurrence; });
    if (!rows || IsMoved(rows->Row().guid)) return;
    const ScheduleRecord row = rows->Row();
    const int shift = MayMove(row.guid) ? 15 * Below(5) : 0;
    const RootEdit edit{.title = Title(),
                        .start = *DateAdd(DateUnit::Minute, shift, *row.apptime),
                        .end = DateAdd(DateUnit::Minute, shift + 30, *row.appdur),
                        .alarm = Below(2) == 0 ? row.alarmtime : std::nullopt,
                        .rule = row.recur.trimmed(),
                        .guid = row.guid,
                        .status = row.status,
                        .origStart = row.apptime,
                        .origEnd = row.appdur,
                        .origAlarm = row.alarmtime};
    EXPECT_TRUE(EditRootEvent(world_.store, edit) && world_.Rebuild());
  }

  /// The identity of a record of the calendar that fits; empty without one.
  QString AnyId(const std::function<bool(const QString&, const Event&)>& fits) {
    QStringList ids;
    for (const auto& [id, event] : calendar_) {
      if (!IsMoved(id) && fits(id, event)) ids << id;
    }
    return ids.isEmpty() ? QString() : ids.at(Below(static_cast<std::size_t>(ids.size())));
  }

  void CalendarAdds() { calendar_[u"g%1q"_qs.arg(++lastId_, 25, 32, QChar(u'k'))] = AnyEvent(NewStatus(calendar_)); }

  void CalendarChanges() {
    const QString id = AnyId([](const QString&, const Event& event) { return event.status != StatusDeleted; });
    if (id.isEmpty()) return;
    Touch(id);
    Event& event = calendar_[id];
    const bool isRoot = event.status == StatusRoot;
    if (Below(4) > 0) {
      event.title = Title();
      if (event.alarm && Below(2) == 0) event.alarm.reset();
      if (!isRoot && Below(2) == 0) event.end = event.start = DateAdd(DateUnit::Minute, Below(300), *event.start);
    } else if (event.status == StatusChanged) {
      event.status = StatusDeleted;
    } else {
      std::erase_if(calendar_, [&id](const auto& entry) { return SeriesBase(entry.first) == id; });
    }
  }

  /// Moves a series or makes one of a single event.
  void CalendarMoves() {
    const QString id = AnyId([this](const QString& name, const Event& event) {
      return savedLocal_.contains(name) &&
             (event.status == StatusRoot || (event.status == StatusSingle && event.alarm));
    });
    if (id.isEmpty() || !MayMove(id)) return;
    Event& event = calendar_[id];
    if (event.status == StatusSingle) {
      event.rule = AnyEvent(StatusRoot).rule;
      event.status = StatusRoot;
    } else {
      event.end = event.start = DateAdd(DateUnit::Minute, Below(300), *event.start);
    }
  }

  /// Changes or deletes an occurrence of a series that both sides know.
  void CalendarExcepts() {
    const auto rows = AnyRow([this](const ScheduleRecord& row) {
      return row.status == StatusOccurrence && !IsMoved(row.guid) && savedLocal_.contains(row.guid) &&
             calendar_.contains(row.guid);
    });
    if (!rows) return;
    const ScheduleRecord& row = rows->Row();
    const QString id = ExceptionGuid(row.guid, *row.apptime, world_.time.biases);
    if (calendar_.contains(id)) return;
    Touch(id);
    Event event = AnyEvent(Below(2) == 0 ? StatusChanged : StatusDeleted);
    event.rule = calendar_[row.guid].rule;
    calendar_[id] = event;
  }

  QString Exported() {
    qint64 count = 0;
    return ExportDataForGoogle(world_.store, count).value_or(u"unreadable"_qs);
  }

  /// Who alone has changed a record prevails, what was deleted stays deleted, and else one of the sides wins.
  static MaybeEvent Decide(const MaybeEvent& local, bool localChanged, const MaybeEvent& calendar, bool calendarChanged,
                           bool localWins) {
    if (!localChanged || !calendarChanged) return localChanged ? local : calendar;
    if (local && local->status == StatusDeleted) return local;
    if (calendar && calendar->status == StatusDeleted) return calendar;
    return localWins ? local : calendar;
  }

  Calendar Merged(const Calendar& local) {
    std::set<QString> ids;
    for (const auto& [id, event] : local) ids.insert(id);
    for (const auto& [id, event] : calendar_) ids.insert(id);
    const bool localWins = Below(2) == 0;
    Calendar merged;
    for (const QString& id : ids) {
      const MaybeEvent ours = In(local, id), theirs = In(calendar_, id);
      const MaybeEvent event =
          Decide(ours, ours != In(savedLocal_, id), theirs, theirs != In(savedCalendar_, id), localWins);
      if (event) merged[id] = *event;
    }
    // Without its root an exception is none.
    const Calendar all = merged;
    std::erase_if(merged, [&all](const auto& entry) {
      const MaybeEvent root = In(all, SeriesBase(entry.first));
      return entry.first.contains(u'_') && !(root && root->status == StatusRoot);
    });
    return merged;
  }

  QString Synchronise() {
    ++rounds_;
    const Calendar local = CalendarOf(Exported());
    calendar_ = Merged(local);
    Calendar named = calendar_;
    // The user's side has no occurrence to delete before it knows the series.
    std::erase_if(named, [&local](const auto& entry) {
      return entry.second.status == StatusDeleted && !local.contains(SeriesBase(entry.first));
    });
    QStringList lines;
    for (const auto& [id, event] : named)
      lines.insert(Below(static_cast<std::size_t>(lines.size()) + 1), LineOf(id, event));
    if (!world_.Merge(lines)) return u"not merged"_qs;
    world_.Rebuild();
    savedLocal_ = CalendarOf(Exported());
    savedCalendar_ = calendar_;
    touched_.clear();
    moved_.clear();
    // What was not named yet goes out by the stamp that it has now.
    for (const auto& [id, event] : calendar_) {
      if (!named.contains(id)) Touch(id);
    }
    return Disagreement(named);
  }

  QString Disagreement(const Calendar& named) const {
    for (const auto& [id, event] : named) {
      const MaybeEvent local = In(savedLocal_, id);
      if (!local) return u"lost: "_qs + LineOf(id, event);
      if (!Agree(event, *local)) return u"calendar: "_qs + LineOf(id, event) + u", user: "_qs + LineOf(id, *local);
    }
    for (const auto& [id, event] : savedLocal_) {
      // Exceptions may stay by the identities that a rebuild has named.
      if (!named.contains(id) && !id.contains(u'_')) return u"not deleted: "_qs + LineOf(id, event);
    }
    return QString();
  }

  MergeWorld world_;
  QRandomGenerator random_;
  Calendar calendar_, savedCalendar_, savedLocal_;
  std::set<QString> touched_, moved_;
  int lastId_ = 0;
  int rounds_ = 0;
};

/// Plays a run; the first act is the zone. Gives what went wrong.
QString Play(const Acts& acts, int* rounds = nullptr) {
  TwoSides sides(acts.front());
  QString fault;
  for (std::size_t act = 1; act < acts.size() && fault.isEmpty(); ++act) fault = sides.Act(acts[act]);
  if (rounds) *rounds += sides.Rounds();
  return fault;
}

/// Leaves out what a fault does not need, for kFormerFaults.
std::string Reduced(Acts acts) {
  for (std::size_t act = acts.size() - 1; act > 0; --act) {
    Acts fewer = acts;
    fewer.erase(fewer.begin() + static_cast<std::ptrdiff_t>(act));
    if (!Play(fewer).isEmpty()) acts = fewer;
  }
  std::string text;
  for (const quint32 act : acts) text += std::to_string(act) + "U, ";
  return text + " " + Play(acts).toStdString();
}

/// Runs that once came to no agreement: a deletion not told yet of a series that moved, an alarm that was not taken
/// away.
const std::array<Acts, 2> kFormerFaults = {{
    {194, 2385606376U, 1702452016U, 1217267402U, 218250950U, 1557089250U, 1005254134U, 2463667707U, 1213539275U,
     551328051U, 4088669896U, 260535566U},
    {1, 3301089477U, 646161469U, 1445795659U, 1852027971U, 1939980628U, 1510363662U, 2693297225U, 2898254306U,
     2587381239U, 3347373368U, 1227780174U, 3246973261U},
}};

}  // namespace

TEST(TwoSides, AgreeAfterEachSynchronisation) {
  for (const Acts& acts : kFormerFaults) EXPECT_EQ(Play(acts).toStdString(), "");
  const int wanted = std::max(qEnvironmentVariableIntValue("TALNIK_SYNC_ROUNDS"), 150);
  int rounds = 0;
  for (quint32 seed = 1; rounds < wanted; ++seed) {
    QRandomGenerator random(seed);
    Acts acts{seed};
    for (int act = 0; act < 150; ++act) acts.push_back(random.generate());
    ASSERT_TRUE(Play(acts, &rounds).isEmpty()) << Reduced(acts);
  }
}

}  // namespace talnik::test
