#include "recurrence/AtRandom.h"
#include "sync/ExchangeFile.h"
#include "sync/MergeWorld.h"

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

/// A user and a calendar that are changed at random and synchronised now and then.
struct TwoSides : AtRandom<MergeWorld> {
  explicit TwoSides(quint32 zone) {
    constexpr std::array zones = {ZoneBiases{-60, 0, -60, false}, ZoneBiases{-60, 0, -60, true}, ZoneBiases{},
                                  ZoneBiases{300, 0, -60, false}};
    time.biases = zones.at(zone % zones.size());
  }

  void Act() {
    if (Below(5) == 0) return Synchronise();
    DoOneOf<TwoSides>({&TwoSides::UserAdds, &TwoSides::UserChanges, &TwoSides::UserChanges, &TwoSides::UserDeletes,
                       &TwoSides::UserEditsRoot, &TwoSides::CalendarAdds, &TwoSides::CalendarMoves,
                       &TwoSides::CalendarChanges, &TwoSides::CalendarChanges, &TwoSides::CalendarExcepts,
                       &TwoSides::CalendarExcepts});
  }

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

  bool IsMoved(const QString& guid) const { return moved.contains(SeriesBase(guid)); }
  void Touch(const QString& guid) { touched.insert(SeriesBase(guid)); }
  /// What a record is moved by on one side the other does not know before the next synchronisation, so that nothing
  /// else may happen to it.
  bool MayMove(const QString& guid) {
    if (touched.contains(SeriesBase(guid))) return false;
    Touch(guid);
    moved.insert(SeriesBase(guid));
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
    row.guid = NewId();
    AddRoot(row);
  }

  void UserChanges() {
    const auto rows =
        AnyRow([this](const ScheduleRecord& row) { return row.status < StatusDeleted && !IsMoved(row.guid); });
    if (!rows) return;
    ScheduleRecord row = rows->Row();
    Touch(row.guid);
    if (row.status != StatusSingle) {
      row.guid = ExceptionGuid(row.guid, *row.apptime, time.biases);
      row.status = StatusChanged;
    }
    row.appointment = Title();
    if (Below(2) == 0) row.appdur = row.apptime = DateAdd(DateUnit::Minute, Below(200), *row.apptime);
    if (Below(2) == 0) row.alarmtime = row.alarmtime ? std::nullopt : row.apptime;
    row.alarm = row.alarmtime.has_value();
    Must(rows->Update(row), u"one is changed"_qs);
  }

  void UserDeletes() {
    const bool series = Below(4) == 0;
    const auto rows = AnyRow([&](const ScheduleRecord& row) {
      return !IsMoved(row.guid) && (series ? row.status == StatusRoot : row.status < StatusDeleted);
    });
    if (!rows) return;
    Touch(rows->Row().guid);
    if (series) {
      DeleteWholeSeries(store, rows->Row().guid, folder.path());
    } else if (rows->Row().status == StatusSingle) {
      DeleteSingle(*rows);
    } else {
      DeleteOccurrence(store, *rows, time.biases);
    }
  }

  void UserEditsRoot() {
    const auto rows = AnyRow([](const ScheduleRecord& row) { return row.status == StatusOccurrence; });
    if (!rows || IsMoved(rows->Row().guid)) return;
    const ScheduleRecord row = rows->Row();
    const int shift = MayMove(row.guid) ? 15 * Below(5) : 0;
    RootEdit edit = Shifted(row, Title(), shift);
    if (Below(2) == 0) edit.alarm = row.alarmtime;
    Must(EditRootEvent(store, edit) && Rebuild(), u"all are changed"_qs);
  }

  /// The identity of a record of the calendar that fits; empty without one.
  QString AnyId(const std::function<bool(const QString&, const Event&)>& fits) {
    QStringList ids;
    for (const auto& [guid, event] : calendar) {
      if (!IsMoved(guid) && fits(guid, event)) ids << guid;
    }
    return ids.isEmpty() ? QString() : ids.at(Below(static_cast<std::size_t>(ids.size())));
  }

  void CalendarAdds() { calendar[u"g%1q"_qs.arg(++lastId, 25, 32, QChar(u'k'))] = AnyEvent(NewStatus(calendar)); }

  void CalendarChanges() {
    const QString guid = AnyId([](const QString&, const Event& event) { return event.status != StatusDeleted; });
    if (guid.isEmpty()) return;
    Touch(guid);
    Event& event = calendar[guid];
    const bool isRoot = event.status == StatusRoot;
    if (Below(4) > 0) {
      event.title = Title();
      if (event.alarm && Below(2) == 0) event.alarm.reset();
      if (!isRoot && Below(2) == 0) event.end = event.start = DateAdd(DateUnit::Minute, Below(300), *event.start);
    } else if (event.status == StatusChanged) {
      event.status = StatusDeleted;
    } else {
      std::erase_if(calendar, [&guid](const auto& entry) { return SeriesBase(entry.first) == guid; });
    }
  }

  /// Moves a series or makes one of a single event.
  void CalendarMoves() {
    const QString guid = AnyId([this](const QString& name, const Event& event) {
      return savedLocal.contains(name) && (event.status == StatusRoot || (event.status == StatusSingle && event.alarm));
    });
    if (guid.isEmpty() || !MayMove(guid)) return;
    Event& event = calendar[guid];
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
      return row.status == StatusOccurrence && !IsMoved(row.guid) && savedLocal.contains(row.guid) &&
             calendar.contains(row.guid);
    });
    if (!rows) return;
    const ScheduleRecord& row = rows->Row();
    const QString guid = ExceptionGuid(row.guid, *row.apptime, time.biases);
    if (calendar.contains(guid)) return;
    Touch(guid);
    Event event = AnyEvent(Below(2) == 0 ? StatusChanged : StatusDeleted);
    event.rule = calendar[row.guid].rule;
    calendar[guid] = event;
  }

  QString Exported() {
    qint64 count = 0;
    return ExportDataForGoogle(store, count).value_or(u"unreadable"_qs);
  }

  /// Who alone has changed a record prevails, what was deleted stays deleted, and else one of the sides wins.
  static MaybeEvent Decide(const MaybeEvent& ours, bool oursChanged, const MaybeEvent& theirs, bool theirsChanged,
                           bool oursWins) {
    if (!oursChanged || !theirsChanged) return oursChanged ? ours : theirs;
    if (ours && ours->status == StatusDeleted) return ours;
    if (theirs && theirs->status == StatusDeleted) return theirs;
    return oursWins ? ours : theirs;
  }

  Calendar Merged(const Calendar& local) {
    std::set<QString> ids;
    for (const auto& [guid, event] : local) ids.insert(guid);
    for (const auto& [guid, event] : calendar) ids.insert(guid);
    const bool localWins = Below(2) == 0;
    Calendar merged;
    for (const QString& guid : ids) {
      const MaybeEvent ours = In(local, guid), theirs = In(calendar, guid);
      const MaybeEvent event =
          Decide(ours, ours != In(savedLocal, guid), theirs, theirs != In(savedCalendar, guid), localWins);
      if (event) merged[guid] = *event;
    }
    // Without its root an exception is none.
    const Calendar all = merged;
    std::erase_if(merged, [&all](const auto& entry) {
      const MaybeEvent root = In(all, SeriesBase(entry.first));
      return entry.first.contains(u'_') && !(root && root->status == StatusRoot);
    });
    return merged;
  }

  void Synchronise() {
    const Calendar local = CalendarOf(Exported());
    calendar = Merged(local);
    Calendar named = calendar;
    // The user's side has no occurrence to delete before it knows the series.
    std::erase_if(named, [&local](const auto& entry) {
      return entry.second.status == StatusDeleted && !local.contains(SeriesBase(entry.first));
    });
    QStringList lines;
    for (const auto& [guid, event] : named)
      lines.insert(Below(static_cast<std::size_t>(lines.size()) + 1), LineOf(guid, event));
    Note(u"synchronised "_qs + lines.join(u'|'));
    Must(Merge(lines), u"the lines are merged"_qs);
    Rebuild();
    savedLocal = CalendarOf(Exported());
    savedCalendar = calendar;
    touched.clear();
    moved.clear();
    // What was not named yet goes out by the stamp that it has now.
    for (const auto& [guid, event] : calendar) {
      if (!named.contains(guid)) Touch(guid);
    }
    CheckThatBothAgree(named);
  }

  void CheckThatBothAgree(const Calendar& named) {
    for (const auto& [guid, event] : named) {
      const MaybeEvent local = In(savedLocal, guid);
      Must(local.has_value(), u"nothing is lost: "_qs + LineOf(guid, event));
      Must(!local || Agree(event, *local),
           u"both sides agree: "_qs + LineOf(guid, event) + u" and "_qs + (local ? LineOf(guid, *local) : QString()));
    }
    for (const auto& [guid, event] : savedLocal) {
      // Exceptions may stay by the identities that a rebuild has named.
      Must(named.contains(guid) || guid.contains(u'_'),
           u"what the calendar deleted is gone: "_qs + LineOf(guid, event));
    }
  }

  Calendar calendar, savedCalendar, savedLocal;
  std::set<QString> touched, moved;
};

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
  for (const Acts& acts : kFormerFaults) EXPECT_EQ(Play<TwoSides>(acts), "");
  PlayRuns<TwoSides>(5, 150);
}

}  // namespace talnik::test
