#include "store/Statements.h"

#include "store/Schema.h"

namespace talnik::statements {

namespace {

Statement Plain(const char* sql) {
  return {QString::fromLatin1(sql), {}};
}

Statement OnDay(const char* sql, const Date& day) {
  return {QString::fromLatin1(sql), {day.DateValue().Serial()}};
}

/// A query that names a term or condition of an index in place of %1.
Statement Terms(const char* sql, const char* term) {
  return {QString::fromLatin1(sql).replace(u"%1"_qs, QString::fromLatin1(term)), {}};
}

/// Rows of the roles that few rows have.
Statement Special(const char* rows) {
  return {u"SELECT * FROM schedule WHERE ("_qs + QString::fromLatin1(kSpecialRows) + u") AND "_qs +
              QString::fromLatin1(rows),
          {}};
}

/// Stored moments are whole seconds, so anything within the second is the moment itself, however it was rounded.
Statement AtMoment(const char* sql, const Date& moment) {
  constexpr double halfSecond = 0.5 / 86400;
  return {QString::fromLatin1(sql), {moment.Serial() - halfSecond, moment.Serial() + halfSecond}};
}

}  // namespace

Statement All() {
  return Plain("SELECT * FROM schedule ORDER BY rowid");
}

Statement AllByStart() {
  return Plain("SELECT * FROM schedule ORDER BY apptime,status,rowid");
}

Statement Visible() {
  return Plain("SELECT * FROM schedule WHERE status<8 OR status IS NULL ORDER BY apptime,status,rowid");
}

Statement VisibleFrom(const Date& day) {
  return OnDay("SELECT * FROM schedule WHERE apptime>=? AND status<8 ORDER BY apptime,status,rowid", day);
}

Statement WithAlarmAfter(const Date& now) {
  return OnDay("SELECT * FROM schedule WHERE alarm<>0 AND apptime>? ORDER BY apptime,status,rowid", now);
}

Statement Containing(const QString& text, const Date& from) {
  // Every text has to be looked at: the plus keeps the rows from being fetched one by one in the order of an index.
  return {u"SELECT * FROM schedule WHERE talnik_like(?,appointment) AND +apptime>=? ORDER BY +apptime,status,rowid"_qs,
          {QString(u'*' + text + u'*'), from.DateValue().Serial()}};
}

Statement StartingAt(const Date& moment) {
  return AtMoment("SELECT * FROM schedule WHERE apptime>? AND apptime<? ORDER BY rowid", moment);
}

Statement AlarmQueue() {
  // Of alarms at one moment those that will ring come first.
  return Terms(
      "SELECT * FROM schedule WHERE alarmtime IS NOT NULL AND %1=0 AND (status IS NULL OR status<>8) "
      "ORDER BY alarmtime,alarm DESC,rowid",
      kFired);
}

Statement AlarmOn() {
  // The plus keeps the whole table from being read for the sake of its order.
  return Plain("SELECT * FROM schedule WHERE alarm<>0 ORDER BY +rowid");
}

Statement WithAlarmTime() {
  return Plain("SELECT * FROM schedule WHERE alarmtime IS NOT NULL ORDER BY rowid");
}

Statement WithAlarmAt(const Date& moment) {
  static const QByteArray sql =
      QByteArray("SELECT * FROM schedule WHERE ") + kFired + " IN (0,1) AND alarmtime>? AND alarmtime<? ORDER BY rowid";
  return AtMoment(sql.constData(), moment);
}

Statement NamingSound(const QString& wav) {
  return {u"SELECT * FROM schedule WHERE wav=? ORDER BY rowid"_qs, {wav}};
}

Statement Roots() {
  return Special("status=9 ORDER BY rowid");
}

Statement RootsWithSpawnTime() {
  return Special("status=9 AND spawntime IS NOT NULL");
}

Statement RootsWithRule() {
  return Special("status=9 AND recur IS NOT NULL ORDER BY apptime,rowid");
}

Statement Exceptions() {
  return Special("status IN (2,8) ORDER BY apptime,status,rowid");
}

Statement Occurrences() {
  return Plain("SELECT * FROM schedule WHERE status=1 ORDER BY rowid");
}

Statement DeleteOccurrences() {
  return Plain("DELETE FROM schedule WHERE status=1");
}

Statement Before(const Date& day) {
  return OnDay("SELECT * FROM schedule WHERE apptime<? ORDER BY rowid", day);
}

Statement DeleteBefore(const Date& day) {
  return OnDay("DELETE FROM schedule WHERE apptime<?", day);
}

Statement DeleteDay(const Date& day) {
  constexpr double minute = 1.0 / 1440;
  const double midnight = day.DateValue().Serial();
  // A moment of the last minute is no less than 23:59:00, wherever its fraction was rounded.
  constexpr double halfSecond = 0.5 / 86400;
  return {u"DELETE FROM schedule WHERE apptime>? AND apptime<? AND status<>9"_qs,
          {midnight, midnight + 1 - minute - halfSecond}};
}

Statement DeleteAll() {
  return Plain("DELETE FROM schedule");
}

Statement CountFrom(const Date& day) {
  return OnDay("SELECT count(*) FROM schedule WHERE apptime>=?", day);
}

Statement CountAll() {
  return Plain("SELECT count(*) FROM schedule");
}

Statement CountAlarms() {
  return Plain("SELECT count(*) FROM schedule WHERE alarm<>0");
}

}  // namespace talnik::statements
