#include "recurrence/SpawnedRows.h"

#include "dates/UtcStamp.h"
#include "recurrence/RuleWalk.h"
#include "store/Text.h"

#include <QLoggingCategory>

namespace talnik {

namespace {

Q_LOGGING_CATEGORY(spawnTrace, "talnik.trace", QtWarningMsg)

QString WithOneBlank(const QString& rule) {
  qsizetype blanks = 0;
  while (blanks < rule.size() && rule[blanks] == u' ') ++blanks;
  return u' ' + rule.mid(blanks);
}

/// Midnight of serial day 0 stands for an end that was never given.
bool IsGiven(const std::optional<Date>& end) {
  return end && *end != Date();
}

}  // namespace

SpawnedRows::SpawnedRows(const SpawnSeries& series, bool& addFirst, const Date& now)
    : title_(series.title), id_(series.id.isEmpty() ? NewGuidText() : series.id), recur_(WithOneBlank(series.rule)) {
  if (IsGiven(series.end)) duration_ = series.end->Seconds() - series.start.Seconds();
  if (series.alarm) alarmOffset_ = series.alarm->Seconds() - series.start.Seconds();
  Walk(series, addFirst, now);
}

void SpawnedRows::Walk(const SpawnSeries& series, bool& addFirst, const Date& now) {
  std::vector<Date> past;
  WalkResult walk = WalkRule(RuleText::Read(series.rule),
                             {.start = series.start, .now = now, .addFirst = addFirst, .spawnTime = series.spawnTime},
                             spawnTrace().isDebugEnabled() ? &past : nullptr);
  if (addFirst && walk.start < now) {
    qCDebug(spawnTrace).noquote() << "Talnik.Add Recur ROOT Event PAST" << DateText(walk.start);
    addFirst = false;
  }
  for (const Date& date : past) qCDebug(spawnTrace).noquote() << "Talnik.Add Recur Event PAST" << DateText(date);
  dates_ = std::move(walk.dates);
  hasOwnRow_ = walk.first;
  if (hasOwnRow_) dates_.insert(dates_.begin(), walk.start);
}

std::optional<Date> SpawnedRows::AlarmAt(const Date& date) const {
  if (!alarmOffset_) return {};
  return Date::FromSeconds(date.Seconds() + *alarmOffset_);
}

ScheduleRecord SpawnedRows::At(const Date& date) const {
  ScheduleRecord row;
  row.apptime = date;
  row.reftime = date;
  row.appointment = title_;
  row.appdur = EndAt(date);
  row.alarm = HasAlarm();
  row.alarmtime = AlarmAt(date);
  row.recur = recur_;
  row.guid = id_;
  row.status = StatusOccurrence;
  return row;
}

void SpawnedRows::AddIdentities(SyncIdList& ids, const ZoneBiases& biases) const {
  for (std::size_t i = hasOwnRow_ ? 1 : 0; i < dates_.size(); ++i) {
    ids.AddSyncId(id_ + u'_' + ToUtcStamp(DateText(dates_[i]), biases, dates_[i]));
  }
}

std::optional<SpawnSeries> SeriesOfRoot(const ScheduleRecord& root) {
  if (!root.apptime) return {};
  return SpawnSeries{.title = root.appointment,
                     .start = *root.apptime,
                     .end = root.appdur.value_or(*root.apptime),
                     .alarm = root.alarmtime,
                     .rule = root.recur,
                     .id = root.guid};
}

bool HasRule(const QString& rule) {
  return !QStringView(rule).trimmed().isEmpty();
}

}  // namespace talnik
