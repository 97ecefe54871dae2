#include "store/DayClasses.h"
#include "store/Schema.h"
#include "store/Statements.h"

#include <QStringList>

namespace talnik::statements {

namespace {

QString Latin(const char* text) {
  return QString::fromLatin1(text);
}

/// What touches the time from ?1 to before ?2 and is visible, as one query over each partial index. Each row is found
/// by one of them.
QStringList VisibleQueries(const QString& what) {
  QStringList queries;
  const auto add = [&](const QString& rows) {
    queries << u"SELECT "_qs + what + u" FROM schedule WHERE "_qs + rows + u" AND "_qs + Latin(kVisible);
  };
  for (const DayClass& day : kDayClasses) {
    const QString since = *day.reach ? QString(u" AND apptime>=?1-"_qs + Latin(day.reach)) : QString();
    add(Latin(day.rows) + since + u" AND apptime<?2 AND appdur>=?1"_qs);
  }
  const QString odd = u'(' + Latin(kOddRows) + u") AND "_qs;
  add(odd + u"apptime>=?1 AND apptime<?2"_qs);
  add(odd + u"appdur>=?1 AND appdur<?2 AND (apptime IS NULL OR apptime<?1 OR apptime>=?2)"_qs);
  return queries;
}

/// The hidden rows are few: all of them are looked at.
QString HiddenQuery() {
  return u"SELECT rowid FROM schedule WHERE ("_qs + Latin(kSpecialRows) +
         u") AND status>=8 AND (+apptime>=?1 AND +apptime<?2 OR +appdur>=?1 AND +appdur<?2 OR +apptime<?1 AND "
         u"+appdur>?1)"_qs;
}

QString RowsSql(const QStringList& queries) {
  return u"SELECT * FROM schedule WHERE rowid IN ("_qs + queries.join(u" UNION ALL "_qs) +
         u") ORDER BY apptime,status,rowid"_qs;
}

QString AnyStatusSql() {
  return RowsSql(VisibleQueries(u"rowid"_qs) << HiddenQuery());
}

QList<QVariant> Span(const Date& day) {
  const double midnight = day.DateValue().Serial();
  return {midnight, midnight + 1};
}

}  // namespace

Statement OfDay(const Date& day) {
  static const QString sql = RowsSql(VisibleQueries(u"rowid"_qs));
  return {sql, Span(day)};
}

Statement OfDayAnyStatus(const Date& day) {
  static const QString sql = AnyStatusSql();
  return {sql, Span(day)};
}

Statement CountOfDay(const Date& day) {
  static const QString sql = u"SELECT ("_qs + VisibleQueries(u"count(*)"_qs).join(u")+("_qs) + u')';
  return {sql, Span(day)};
}

Statement Touching(const Date& from, const Date& to) {
  static const QString sql = AnyStatusSql();
  return {sql, {from.Serial(), to.Serial()}};
}

}  // namespace talnik::statements
