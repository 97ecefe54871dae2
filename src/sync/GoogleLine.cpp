#include "sync/GoogleLine.h"

#include "dates/LeadingNumber.h"
#include "dates/UtcStamp.h"
#include "recurrence/RuleText.h"
#include "store/Text.h"

#include <QStringView>

#include <array>

namespace talnik {

namespace {

enum GoogleField { InTitle, InStart, InEnd, InAlarm, InRule, InId, InStatus, GoogleFieldCount };

using GoogleFields = std::array<QStringView, GoogleFieldCount>;

constexpr std::array<const char16_t*, 6> kRuleWords = {u"RRULE", u"UNTIL",    u"COUNT",
                                                       u"BYDAY", u"INTERVAL", u"BYMONTHDAY"};

/// The text from `from` up to the next blank; empty behind the end.
QStringView TokenAt(QStringView text, qsizetype from) {
  if (from >= text.size()) return {};
  const qsizetype blank = text.indexOf(u' ', from);
  return text.sliced(from, (blank < 0 ? text.size() : blank) - from);
}

void TakeRuleMoment(QStringView token, QString& moment, QString& rule) {
  const qsizetype colon = token.indexOf(u':');
  if (colon < 0) return;
  moment = ParseRuleStamp(token.sliced(colon + 1).toString());
  rule += u' ' + moment;
}

void TakeRuleWords(QStringView token, QString& rule) {
  for (const char16_t* word : kRuleWords) {
    if (token.contains(QStringView(word))) rule += u' ' + token;
  }
}

void TakeIdentity(GoogleLine& line, const ZoneBiases& biases, const Date& today) {
  line.seriesId = line.id;
  if (line.rule.isEmpty()) return;
  const qsizetype mark = line.id.indexOf(u'_');
  if (mark >= 0) {
    line.status = StatusChanged;
    line.seriesId = line.id.left(mark);
    line.exceptionTime = FromUtcStamp(line.id.mid(mark + 1), biases);
    return;
  }
  line.status = StatusRoot;
  const auto start = CDate(line.ruleStart, today);
  if (!start) return;
  constexpr std::int64_t enough = 10'000'000'000;  // minutes, for any date
  if (const auto alarm = DateAdd(DateUnit::Minute, -LeadingNumber(line.alarm, enough), *start))
    line.alarm = DateText(*alarm);
}

}  // namespace

QString ParseGoogleRule(const QString& field, QString& start, QString& end) {
  if (!field.contains(u"DTSTART")) return field;
  QString rule;
  bool outsideZone = true;
  QStringView token;
  for (qsizetype at = 0; at < field.size(); at += token.size() + 1) {
    token = TokenAt(field, at);
    if (token.isEmpty()) continue;
    if (token == u"BEGIN:VTIMEZONE") outsideZone = false;
    if (token == u"END:VTIMEZONE") outsideZone = true;
    if (!outsideZone) continue;
    const QStringView next = TokenAt(field, at + token.size() + 1);
    if (token == u"DTSTART") TakeRuleMoment(next, start, rule);
    if (token == u"DTEND") TakeRuleMoment(next, end, rule);
    TakeRuleWords(token, rule);
  }
  return rule;
}

GoogleLine ReadGoogleLine(const QString& text, const ZoneBiases& biases, const Date& today) {
  const GoogleFields fields = SplitFields<GoogleFieldCount>(text, u';');
  GoogleLine line;
  line.title = CutToSize(fields[InTitle].toString(), AppointmentSize);
  line.start = fields[InStart].toString();
  line.end = fields[InEnd].isEmpty() ? line.start : fields[InEnd].toString();
  line.hasAlarm = !fields[InAlarm].isEmpty();
  line.alarm = fields[InAlarm].toString();
  line.rule = ParseGoogleRule(fields[InRule].toString(), line.ruleStart, line.ruleEnd);
  // Blanks alone would make a series that never takes place.
  if (QStringView(line.rule).trimmed().isEmpty()) line.rule.clear();
  line.id = CutToSize(StripAtNul(fields[InId].toString()), GuidSize);
  TakeIdentity(line, biases, today);
  if (fields[InStatus].trimmed() == u"8") line.status = StatusDeleted;
  return line;
}

}  // namespace talnik
