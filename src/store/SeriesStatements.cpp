#include "store/Schema.h"
#include "store/Statements.h"
#include "store/Text.h"

#include <algorithm>

namespace talnik::statements {

namespace {

/// An identity of our own, which other rows of our own can only begin with.
bool IsOwnIdentity(const QString& base) {
  return base.size() == 32 && std::all_of(base.begin(), base.end(), [](QChar digit) {
           return (digit >= u'0' && digit <= u'9') || (digit >= u'a' && digit <= u'f');
         });
}

/// The rows whose guid is LIKE *base*, as a condition with its values.
Statement SeriesRows(const QString& guidOrBase) {
  const QString base = SeriesBase(guidOrBase);
  if (base.isEmpty()) return {u"0"_qs, {}};
  const QString pattern = u'*' + base + u'*';
  const QString folded = base.toLower();
  if (!IsOwnIdentity(folded)) {
    return {u"rowid IN (SELECT rowid FROM schedule WHERE talnik_like(?,guid))"_qs, {pattern}};
  }
  static const QString sql =
      u"rowid IN (SELECT rowid FROM schedule WHERE guid COLLATE NOCASE>=? AND guid COLLATE NOCASE<? UNION "
      u"SELECT rowid FROM schedule WHERE "_qs +
      QString::fromLatin1(OddGuid()) + u" AND talnik_like(?,guid))"_qs;
  // The first text behind all that begin with the base.
  const QString behind = folded.chopped(1) + QChar(folded.back().unicode() + 1);
  return {sql, {folded, behind, pattern}};
}

Statement WithRows(const QString& head, const QString& guidOrBase, const QString& tail) {
  Statement statement = SeriesRows(guidOrBase);
  statement.sql = head + statement.sql + tail;
  return statement;
}

Statement SelectSeries(const QString& guidOrBase, const QString& also) {
  return WithRows(u"SELECT * FROM schedule WHERE "_qs, guidOrBase, also + u" ORDER BY apptime,status,rowid"_qs);
}

}  // namespace

Statement OfSeries(const QString& guidOrBase) {
  return SelectSeries(guidOrBase, QString());
}

Statement WithGuid(const QString& guid) {
  return {u"SELECT * FROM schedule WHERE guid=?1 COLLATE NOCASE AND guid=?1 ORDER BY rowid"_qs, {guid}};
}

Statement OfSeriesBelow8(const QString& guidOrBase) {
  return SelectSeries(guidOrBase, u" AND status<8"_qs);
}

Statement OfSeriesWithStatus(const QString& guidOrBase, int status) {
  return SelectSeries(guidOrBase, u" AND status="_qs + QString::number(status));
}

Statement OfSeriesNotRoot(const QString& guidOrBase) {
  return SelectSeries(guidOrBase, u" AND status<>9"_qs);
}

Statement DeleteSeries(const QString& guidOrBase) {
  return WithRows(u"DELETE FROM schedule WHERE "_qs, guidOrBase, QString());
}

Statement DeleteOccurrencesOfDay(const QString& base, const Date& day) {
  const double midnight = day.DateValue().Serial();
  const QString series = SeriesBase(base);
  const QString pattern = series.isEmpty() ? QString() : QString(u'*' + series + u'*');
  // One day holds few rows: they are looked through.
  return {u"DELETE FROM schedule WHERE apptime>=? AND apptime<? AND status=1 AND talnik_like(?,guid)"_qs,
          {midnight, midnight + 1, pattern}};
}

}  // namespace talnik::statements
