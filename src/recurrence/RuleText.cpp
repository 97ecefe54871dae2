#include "recurrence/RuleText.h"

#include "dates/LeadingNumber.h"

#include <QStringList>

#include <array>

namespace talnik {

namespace {

struct Code {
  QLatin1String text;
  int weekday;
};
/// In the order in which the codes stand in a list.
constexpr std::array<Code, 7> kDayCodes = {{{QLatin1String("MO"), 2},
                                            {QLatin1String("TU"), 3},
                                            {QLatin1String("WE"), 4},
                                            {QLatin1String("TH"), 5},
                                            {QLatin1String("FR"), 6},
                                            {QLatin1String("SA"), 7},
                                            {QLatin1String("SU"), 1}}};

struct Word {
  QLatin1String text;
  RuleFrequency frequency;
};
constexpr std::array<Word, 4> kWords = {{{QLatin1String("DAILY"), RuleFrequency::Daily},
                                         {QLatin1String("WEEKLY"), RuleFrequency::Weekly},
                                         {QLatin1String("MONTHLY"), RuleFrequency::Monthly},
                                         {QLatin1String("YEARLY"), RuleFrequency::Yearly}}};

/// More than any date needs, and so little that sums of it cannot overflow.
constexpr std::int64_t kEnough = 1'000'000'000;

void ReadDays(QStringView piece, QStringView value, RuleText& rule) {
  for (const Code& code : kDayCodes) {
    if (piece.contains(code.text)) rule.days.Add(code.weekday);
  }
  rule.ordinal = static_cast<int>(LeadingDigits(value, kEnough));
}

void ReadPiece(QStringView piece, RuleText& rule) {
  const qsizetype equals = piece.indexOf(u'=');
  const bool hasValue = equals >= 0;
  const QStringView value = hasValue ? piece.mid(equals + 1) : QStringView();
  if (piece.contains(QLatin1String("UNTIL"))) {
    rule.endsByDate = true;
    // The text names day, month and year, so the year of today cannot matter.
    if (const auto until = CDate(ParseRuleStamp(value.toString()), Date())) rule.until = until;
  }
  if (piece.contains(QLatin1String("BYDAY"))) ReadDays(piece, value, rule);
  if (piece.contains(QLatin1String("BYMONTHDAY"))) rule.monthDay = static_cast<int>(LeadingDigits(value, kEnough));
  if (piece.contains(QLatin1String("COUNT"))) {
    const std::int64_t count = LeadingDigits(value, kEnough);
    if (count > 0) rule.count = count;
  }
  if (hasValue && piece.contains(QLatin1String("INTERVAL"))) rule.interval = LeadingDigits(value, kEnough);
  for (const Word& word : kWords) {
    if (piece.contains(QString(u"FREQ=" + word.text))) rule.frequency = word.frequency;
  }
}

QString Digits(int number, int width) {
  return QString::number(number).rightJustified(width, u'0');
}

QString WithoutLeadingZero(QStringView text) {
  return (text.startsWith(u'0') ? text.mid(1) : text).toString();
}

}  // namespace

RuleText RuleText::Read(const QString& text) {
  RuleText rule;
  for (const QStringView piece : QStringView(text).split(u' ')) ReadPiece(piece, rule);
  return rule;
}

QString RuleText::Write() const {
  QString text = QStringLiteral("RRULE:FREQ=");
  for (const Word& word : kWords) {
    if (word.frequency == frequency) text += word.text;
  }
  if (frequency == RuleFrequency::Weekly) {
    text += u' ';
    QStringList codes;
    for (const Code& code : kDayCodes) {
      if (days.Has(code.weekday)) codes << code.text;
    }
    if (!codes.isEmpty()) text += u"BYDAY=" + codes.join(u',');
  }
  text += u' ';
  if (frequency == RuleFrequency::Monthly && monthDay > 0) {
    text += u"BYMONTHDAY=" + QString::number(monthDay) + u' ';
  } else if (frequency == RuleFrequency::Monthly && ordinal > 0) {
    for (const Code& code : kDayCodes) {
      if (days.Has(code.weekday)) text += u"BYDAY=" + QString::number(ordinal) + code.text + u' ';
    }
  }
  text += u"INTERVAL=" + QString::number(interval) + u' ';
  if (EndsByCount()) return text + u"COUNT=" + QString::number(count);
  if (until) return text + u"UNTIL=" + MakeRuleStamp(*until) + u'Z';
  return text;
}

QString DayCode(int weekday) {
  for (const Code& code : kDayCodes) {
    if (code.weekday == weekday) return code.text;
  }
  return QString();
}

int WeekdayOrdinal(const Date& date) {
  return (date.Day() - 1) / 7 + 1;
}

QString MakeRuleStamp(const Date& moment) {
  return QString::number(moment.Year()) + Digits(moment.Month(), 2) + Digits(moment.Day(), 2) + u'T' +
         Digits(moment.Hour(), 2) + Digits(moment.Minute(), 2) + u"00";
}

QString ParseRuleStamp(const QString& stamp) {
  if (stamp.size() < 15 || stamp[8] != u'T') return QString();
  const QStringView text(stamp);
  return WithoutLeadingZero(text.mid(6, 2)) + u'.' + WithoutLeadingZero(text.mid(4, 2)) + u'.' + text.left(4) + u' ' +
         text.mid(9, 2) + u':' + text.mid(11, 2) + u':' + text.mid(13, 2);
}

bool SameRule(const QString& a, const QString& b) {
  return a.trimmed() == b.trimmed();
}

}  // namespace talnik
