#include "store/DayClasses.h"
#include "store/Statements.h"

#include <QStringList>

namespace talnik::statements {

namespace {

constexpr auto kVisible = "(status<8 OR status IS NULL)";

/// What touches the time from ?1 to before ?2, as one query over each partial index. Each row is in one of them.
QStringList TouchingQueries(const QString& what, const QString& also) {
  QStringList queries;
  const auto add = [&](const QString& rows) {
    queries << u"SELECT "_qs + what + u" FROM schedule WHERE "_qs + rows + also;
  };
  for (const DayClass& day : kDayClasses) {
    const QString reach = QString::fromLatin1(day.reach);
    const QString since = reach.isEmpty() ? QString() : QString(u" AND apptime>=?1-"_qs + reach);
    add(QString::fromLatin1(day.rows) + since + u" AND apptime<?2 AND appdur>=?1"_qs);
  }
  const QString odd = u'(' + QString::fromLatin1(kOddRows) + u") AND "_qs;
  add(odd + u"apptime>=?1 AND apptime<?2"_qs);
  add(odd + u"appdur>=?1 AND appdur<?2 AND (apptime IS NULL OR apptime<?1 OR apptime>=?2)"_qs);
  return queries;
}

QString RowsSql(const QString& also) {
  return u"SELECT * FROM schedule WHERE rowid IN ("_qs + TouchingQueries(u"rowid"_qs, also).join(u" UNION ALL "_qs) +
         u") ORDER BY apptime,status,rowid"_qs;
}

QString AndVisible() {
  return u" AND "_qs + QString::fromLatin1(kVisible);
}

QList<QVariant> Span(const Date& day) {
  const double midnight = day.DateValue().Serial();
  return {midnight, midnight + 1};
}

}  // namespace

Statement OfDay(const Date& day) {
  static const QString sql = RowsSql(AndVisible());
  return {sql, Span(day)};
}

Statement OfDayAnyStatus(const Date& day) {
  static const QString sql = RowsSql(QString());
  return {sql, Span(day)};
}

Statement CountOfDay(const Date& day) {
  static const QString sql = u"SELECT ("_qs + TouchingQueries(u"count(*)"_qs, AndVisible()).join(u")+("_qs) + u')';
  return {sql, Span(day)};
}

Statement Touching(const Date& from, const Date& to) {
  static const QString sql = RowsSql(QString());
  return {sql, {from.Serial(), to.Serial()}};
}

}  // namespace talnik::statements
