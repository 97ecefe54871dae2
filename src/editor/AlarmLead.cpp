#include "editor/AlarmLead.h"

#include "store/Text.h"
#include "timetools/SpinTimeField.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdlib>

namespace talnik {
namespace {

constexpr std::int64_t Minute = 60;
constexpr std::int64_t Hour = 60 * Minute;
constexpr std::int64_t Day = 24 * Hour;

struct LeadRow {
  const char* text;
  DateUnit unit;
  int amount;
};

constexpr std::array<LeadRow, LeadCustom + 1> LeadTable = {{
    {QT_TRANSLATE_NOOP("AlarmLead", "žádný"), DateUnit::Minute, 0},
    {QT_TRANSLATE_NOOP("AlarmLead", "přesně"), DateUnit::Minute, 0},
    {QT_TRANSLATE_NOOP("AlarmLead", "5 minut předem"), DateUnit::Minute, 5},
    {QT_TRANSLATE_NOOP("AlarmLead", "10 minut předem"), DateUnit::Minute, 10},
    {QT_TRANSLATE_NOOP("AlarmLead", "15 minut předem"), DateUnit::Minute, 15},
    {QT_TRANSLATE_NOOP("AlarmLead", "30 minut předem"), DateUnit::Minute, 30},
    {QT_TRANSLATE_NOOP("AlarmLead", "1 hodina předem"), DateUnit::Hour, 1},
    {QT_TRANSLATE_NOOP("AlarmLead", "2 hodiny předem"), DateUnit::Hour, 2},
    {QT_TRANSLATE_NOOP("AlarmLead", "3 hodin předem"), DateUnit::Hour, 3},
    {QT_TRANSLATE_NOOP("AlarmLead", "1 den předem"), DateUnit::Day, 1},
    {QT_TRANSLATE_NOOP("AlarmLead", "2 dny předem"), DateUnit::Day, 2},
    {QT_TRANSLATE_NOOP("AlarmLead", "3 dny předem"), DateUnit::Day, 3},
    {QT_TRANSLATE_NOOP("AlarmLead", "1 týden předem"), DateUnit::Day, 7},
    {QT_TRANSLATE_NOOP("AlarmLead", "vlastní"), DateUnit::Minute, 0},
}};

struct UnitRow {
  const char* text;
  DateUnit unit;
  int step;
  int largest;  ///< where the spinner stops
};

constexpr std::array<UnitRow, LeadYears + 1> UnitTable = {{
    {QT_TRANSLATE_NOOP("AlarmLead", "minut"), DateUnit::Minute, 1, 59},
    {QT_TRANSLATE_NOOP("AlarmLead", "hodin"), DateUnit::Hour, 1, 23},
    {QT_TRANSLATE_NOOP("AlarmLead", "dní"), DateUnit::Day, 1, 600},
    {QT_TRANSLATE_NOOP("AlarmLead", "týdnů"), DateUnit::Day, 7, 600},
    {QT_TRANSLATE_NOOP("AlarmLead", "měsíců"), DateUnit::Month, 1, 600},
    {QT_TRANSLATE_NOOP("AlarmLead", "roků"), DateUnit::Year, 1, 600},
}};

template <class Table>
QStringList TextsOf(const Table& table) {
  QStringList texts;
  for (const auto& row : table) texts << QCoreApplication::translate("AlarmLead", row.text);
  return texts;
}

template <class Table>
bool IsPlaceIn(const Table& table, int place) {
  return place >= 0 && place < static_cast<int>(table.size());
}

/// The fixed lead that lies exactly `seconds` before the start; below a day also behind it.
std::optional<int> FixedLead(std::int64_t seconds) {
  for (int place = LeadExact + 1; place < LeadCustom; ++place) {
    const LeadRow& row = LeadTable.at(static_cast<std::size_t>(place));
    const std::int64_t unit = row.unit == DateUnit::Minute ? Minute : row.unit == DateUnit::Hour ? Hour : Day;
    const std::int64_t lead = row.amount * unit;
    if (seconds == lead || (seconds == -lead && lead < Day)) return place;
  }
  return std::nullopt;
}

AlarmLead Custom(int unit, int value) {
  return {LeadCustom, unit, QString::number(value), false};
}

/// A lead of whole days. The units are told from the calendar day on which the serial number of the days falls, the
/// serial scale beginning at the end of 1899.
AlarmLead WholeDays(std::int64_t days) {
  using namespace std::chrono;
  const sys_days day = sys_days(year(1899) / December / 30) + std::chrono::days(days);
  const year_month_day parts(day);
  const int dayOfYear = static_cast<int>((day - sys_days(parts.year() / January / 1)).count()) + 1;
  const int weeks = (dayOfYear + 1) % 7 == 0 ? (dayOfYear + 1) / 7 : 0;
  int months = static_cast<int>(static_cast<unsigned>(parts.month()));
  int years = static_cast<int>(parts.year()) - 1899;

  if (years == 1) years = 0;
  if (years == 0 && months == 12) {
    years = 1;
    months = 0;
  }
  if (weeks >= 1 && weeks % 4 != 0) months = 0;
  if (dayOfYear <= 31) months = 0;

  if (years > 0) return Custom(LeadYears, years);
  if (months > 0) return Custom(LeadMonths, months);
  if (weeks < 1) return Custom(LeadDays, dayOfYear == 365 ? 1 : dayOfYear + 1);
  return Custom(LeadWeeks, weeks);
}

}  // namespace

QStringList UserUnitTexts() {
  return TextsOf(LeadTable);
}

QStringList AlarmUnitTexts() {
  return TextsOf(UnitTable);
}

QString AlarmTextFromLead(const AlarmLead& lead, const QString& startText, const Date& today) {
  if (lead.userUnit == LeadExact) return startText;
  const auto start = CDate(startText, today);
  if (!start || lead.userUnit == LeadNone || !IsPlaceIn(LeadTable, lead.userUnit)) return QString();

  DateUnit unit = LeadTable.at(static_cast<std::size_t>(lead.userUnit)).unit;
  std::int64_t amount = LeadTable.at(static_cast<std::size_t>(lead.userUnit)).amount;
  if (lead.userUnit == LeadCustom) {
    if (!IsPlaceIn(UnitTable, lead.alarmUnit)) return QString();
    const UnitRow& row = UnitTable.at(static_cast<std::size_t>(lead.alarmUnit));
    unit = row.unit;
    amount = std::llrint(FieldNumber(lead.value) * row.step);
  }
  const auto alarm = DateAdd(unit, -amount, *start);
  return alarm ? DateText(*alarm) : QString();
}

AlarmLead LeadOfAlarm(const Date& alarm, const Date& start) {
  const std::int64_t seconds = start.Seconds() - alarm.Seconds();
  if (seconds == 0) return {LeadExact, LeadMinutes, QString(), false};
  if (const auto fixed = FixedLead(seconds)) return {*fixed, LeadMinutes, QString(), false};

  const std::int64_t timePart = std::abs(seconds) % Day;
  const int hours = static_cast<int>(timePart / Hour);
  const int minutes = static_cast<int>(timePart % Hour / Minute);
  if (minutes == 0 && hours == 0) return WholeDays(seconds / Day);
  if (minutes == 0) return Custom(LeadHours, hours);
  if (hours == 0) return Custom(LeadMinutes, minutes);
  return {LeadCustom, LeadMonths, TrimSeconds(DateText(alarm)), true};
}

double FieldNumber(const QString& text) {
  constexpr double Largest = 1e9;
  QByteArray number;
  for (const QChar character : text.left(64)) {
    const bool digit = character >= u'0' && character <= u'9';
    const bool point = character == u'.' && !number.contains('.');
    if (character == u' ') continue;
    if (!digit && !point) break;
    number += character.toLatin1();
  }
  return std::min(number.toDouble(), Largest);
}

QString SpinLeadValue(const QString& text, int step, int alarmUnit) {
  const auto place = static_cast<std::size_t>(IsPlaceIn(UnitTable, alarmUnit) ? alarmUnit : int{LeadYears});
  return SpinTimeField(text, step, 0, UnitTable.at(place).largest, SpinFormat::Plain);
}

void TypeLeadDigit(QString& text, int& caret, QChar digit) {
  text.replace(caret, caret < text.size() ? 1 : 0, digit);
  ++caret;
}

}  // namespace talnik
