#include "alarms/AlarmWords.h"

#include "dates/CzechNumbers.h"

#include <QCoreApplication>

#include <array>
#include <cstdlib>

namespace talnik {

QString EventDistance(const Date& event, const Date& now) {
  struct Unit {
    std::int64_t minutes;
    std::int64_t modulus;  ///< 0 for none
    QString (*word)(qint64 n, bool past);
  };
  static constexpr std::array<Unit, 4> units = {
      {{525600, 0, YearsWord}, {1440, 365, DaysWord}, {60, 24, HoursWord}, {1, 60, MinutesWord}}};

  const bool past = now >= event;
  const std::int64_t minutes = std::abs(event.Seconds() - now.Seconds()) / 60;
  QString text;
  for (const Unit& unit : units) {
    const std::int64_t whole = minutes / unit.minutes;
    const std::int64_t count = unit.modulus ? whole % unit.modulus : whole;
    if (count > 0) text += unit.word(count, past);
  }
  if (text.isEmpty()) return text;
  const QString lead =
      past ? QCoreApplication::translate("AlarmWords", "Před ") : QCoreApplication::translate("AlarmWords", "Za ");
  return lead + text;
}

}  // namespace talnik
