#include "alarms/AlarmQueue.h"

#include "alarms/AlarmShift.h"
#include "alarms/AlarmWords.h"
#include "dates/UtcStamp.h"
#include "store/Recordset.h"
#include "store/Statements.h"
#include "store/Text.h"

#include <QFile>
#include <QLoggingCategory>

#include <algorithm>
#include <utility>

namespace talnik {

namespace {

Q_LOGGING_CATEGORY(alarmTrace, "talnik.trace", QtWarningMsg)

void Trace(const QString& line) {
  qCDebug(alarmTrace).noquote() << line;
}

QString OptionalText(const std::optional<Date>& moment) {
  return moment ? DateText(*moment) : QString();
}

bool IsPending(const ScheduleRecord& row) {
  return row.alarmtime && !row.alarmfired && row.status != StatusDeleted;
}

}  // namespace

AlarmQueue::AlarmQueue(AlarmSurroundings surroundings) : world_(std::move(surroundings)) {}

Date AlarmQueue::NoAlarm() {
  return Date::FromParts(3000, 12, 31).value_or(Date());
}

QString AlarmQueue::NextAlarmTime() const {
  return OptionalText(NextAlarm);
}

bool AlarmQueue::Due() {
  if (!NextAlarm) return false;
  const bool reached = Now() >= *NextAlarm;
  if (!reached) AlarmRung = false;
  return reached && !AlarmRung;
}

void AlarmQueue::RegisterAlarm() {
  Trace(u"Taln.RegisterAlarm"_qs);
  RetryMarks();
  std::optional<ScheduleRecord> next;
  int count = 0;
  const bool read = world_.store.ForEach(statements::AlarmQueue(), [&](const ScheduleRecord& row) {
    // What another program wrote there need not be a moment.
    if (!row.alarmtime || IsGiven(row)) return true;
    if (!next) next = row;
    ++count;
    // The others are only counted, and only where somebody reads the count.
    return alarmTrace().isDebugEnabled();
  });
  if (!read) return;
  NextAlarm = NoAlarm();
  Trace(u"ALARM.mySet.RecordCount: "_qs + QString::number(count));
  if (next) Await(*next);
  Trace(u"ALARM.time: "_qs + NextAlarmTime() + u" - "_qs + NextAlarmText);
  Trace(u"ALARM.alarmSnd: "_qs + NextAlarmSound);
}

void AlarmQueue::Await(const ScheduleRecord& row) {
  AlarmRung = false;
  isSetOff_ = false;
  NextAlarm = row.alarmtime;
  NextAlarmText = row.appointment.trimmed();
  NextAlarmSound = StripAtNul(row.wav).trimmed();
  Trace(u"Talnik.Alarm.Set "_qs + NextAlarmTime() + u' ' + QVariant(row.alarmfired).toString());
  Trace(u"Talnik.Alarm.Set.Status "_qs + (row.status ? QString::number(*row.status) : QString()));
}

bool AlarmQueue::AlarmSetOff(const QString& text, const QString& timeText) {
  Trace(u"Talnik.Alarm.SetOff.Entry"_qs);
  const auto moment = CDate(timeText, Now());
  if (!moment) return false;
  isSetOff_ = true;
  const auto rows = Recordset::Open(world_.store, statements::WithAlarmAt(*moment));
  if (!rows) return true;
  // One that was postponed carries an alarm again, but has fired: the mark is not for it.
  const bool marked = rows->FindFirst([&](const ScheduleRecord& row) {
    return row.alarm && row.alarmtime == moment && IsPending(row) &&
           (text.isEmpty() || row.appointment.trimmed() == text) && !IsGiven(row);
  });
  if (!marked) return !PassOver(*rows, *moment);
  Trace(u"Talnik.Alarm.SetOff "_qs + timeText);
  MarkFired(*rows);
  return true;
}

void AlarmQueue::MarkFired(Recordset& rows) {
  const ScheduleRecord old = rows.Row();
  ScheduleRecord row = old;
  row.alarm = false;
  row.alarmfired = true;
  if (!rows.Update(row)) given_.push_back(old);
}

/// Marks a row that waits without an alarm. False when there is none at that moment.
bool AlarmQueue::PassOver(Recordset& rows, const Date& moment) {
  const bool found = rows.FindFirst(
      [&](const ScheduleRecord& row) { return row.alarmtime == moment && IsPending(row) && !IsGiven(row); });
  if (!found) return false;
  MarkFired(rows);
  RegisterAlarm();
  return true;
}

bool AlarmQueue::IsGiven(const ScheduleRecord& row) const {
  return std::find(given_.begin(), given_.end(), row) != given_.end();
}

void AlarmQueue::RetryMarks() {
  for (const ScheduleRecord& given : std::exchange(given_, {})) {
    const auto rows = Recordset::Open(world_.store, statements::WithAlarmAt(*given.alarmtime));
    if (!rows) {
      given_.push_back(given);
    } else if (rows->FindFirst([&given](const ScheduleRecord& row) { return row == given; })) {
      MarkFired(*rows);
    }
  }
}

void AlarmQueue::AlarmFinished() {
  if (!NextAlarm) {
    AlarmRung = true;
    return;
  }
  // The alarm that was given has been marked as it went off. What waits at its moment, or has come into its place
  // while the box was open, is still to be heard.
  if (AlarmRung && !isSetOff_) AlarmSetOff(QString(), NextAlarmTime());
  RegisterAlarm();
}

void AlarmQueue::DelAlarm() {
  if (!NextAlarm) return;
  Trace(u"TALNIK.DelAlarm: "_qs + NextAlarmTime());
  const auto rows = Recordset::Open(world_.store, statements::WithAlarmAt(*NextAlarm));
  QString series;
  QString wav;
  for (; rows && !rows->Eof(); rows->MoveNext()) {
    const ScheduleRecord row = rows->Row();
    if (row.alarmtime != NextAlarm) continue;
    if (!row.recur.trimmed().isEmpty()) {
      series = StripAtNul(row.guid);
      if (row.status != StatusRoot) MakeTombstone(*rows);
    } else if (rows->Delete()) {
      wav = StripAtNul(row.wav).trimmed();
    }
  }
  if (!series.isEmpty() && world_.deleteSeriesIfEmpty) world_.deleteSeriesIfEmpty(series);
  if (!wav.isEmpty()) DeleteUnusedSound(wav);
  RegisterAlarm();
}

void AlarmQueue::MakeTombstone(Recordset& rows) {
  ScheduleRecord row = rows.Row();
  row.status = StatusDeleted;
  row.guid = StripAtNul(row.guid);
  // An occurrence changed before keeps the stamp of its first place.
  if (!row.guid.contains(u'_')) {
    row.guid += u'_' + ToUtcStamp(OptionalText(row.apptime), world_.timeZone.Biases(), Now());
  }
  rows.Update(row);
}

void AlarmQueue::DeleteUnusedSound(const QString& wav) {
  const QString name = ExtractFileName(wav);
  bool used = name.isEmpty();
  // A row may name the note by its path or by its name alone.
  for (const QString& form : {wav, name}) {
    const bool read = world_.store.ForEach(statements::NamingSound(form), [&used](const ScheduleRecord&) {
      used = true;
      return false;
    });
    used = used || !read;
  }
  if (!used) QFile::remove(world_.recordFolder + u'/' + name);
}

QString AlarmQueue::AppTimeFromAlarm() const {
  if (!NextAlarm) return QString();
  std::optional<Date> event;
  bool isTheOne = false;
  world_.store.ForEach(statements::WithAlarmAt(*NextAlarm), [&](const ScheduleRecord& row) {
    if (row.alarmtime != NextAlarm) return true;
    // Of several events with one alarm, the one whose text is shown.
    isTheOne = row.appointment.trimmed() == NextAlarmText;
    if (isTheOne || !event) event = row.apptime;
    return !isTheOne;
  });
  return event ? EventDistance(*event, Now()) : QString();
}

void AlarmQueue::ShiftAlarm(int hours, int minutes, const QString& dateText) {
  if (!NextAlarm) {
    AlarmRung = true;
    return;
  }
  const Date old = *NextAlarm;
  Trace(u"...ShiftAlarm("_qs + DateText(old) + u')');
  const auto moment = MomentOfShift(hours, minutes, dateText);
  if (!moment) return;
  const auto rows = Recordset::Open(world_.store, statements::WithAlarmAt(old));
  Trace(u"...ShiftAlarm.recCount: "_qs + QString::number(rows ? rows->RecordCount() : 0));
  for (; rows && !rows->Eof(); rows->MoveNext()) {
    if (rows->Row().alarmtime != old) continue;
    Trace(u"...ShiftAlarm.NewVal: "_qs + DateText(*moment));
    rows->Update(ShiftedAlarm(rows->Row(), old, *moment));
  }
  RegisterAlarm();
}

std::optional<Date> AlarmQueue::MomentOfShift(int hours, int minutes, const QString& dateText) const {
  const Date now = Now();
  if (!dateText.isEmpty()) return CDate(dateText, now);
  return DateAdd(DateUnit::Minute, std::max(hours, 0) * 60 + std::max(minutes, 0), now);
}

}  // namespace talnik
