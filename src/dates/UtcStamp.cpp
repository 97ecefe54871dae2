#include "dates/UtcStamp.h"

#include <array>
#include <cmath>

namespace talnik {

namespace {

QString TwoCharacters(int number) {
  const QString text = QString::number(number);
  return text.size() == 1 ? u'0' + text : text;
}

/// The hour moved by the biases one after the other, each sum rounded as it is formed, halves to the even number.
int ShiftHour(int hour, const ZoneBiases& biases, int sign) {
  for (const int bias : {biases.Bias, biases.StandardBias, biases.DaylightInForce ? biases.DaylightBias : 0}) {
    hour = static_cast<int>(std::nearbyint(hour + sign * bias / 60.0));
  }
  return hour;
}

}  // namespace

QString ToUtcStamp(const QString& dateText, const ZoneBiases& biases, const Date& today) {
  const auto date = CDate(dateText, today);
  if (!date) return QString();
  QString day = QString::number(date->Year()) + TwoCharacters(date->Month()) + TwoCharacters(date->Day());
  if (!dateText.contains(u':')) return day;
  return day + u'T' + TwoCharacters(ShiftHour(date->Hour(), biases, 1)) + TwoCharacters(date->Minute()) +
         TwoCharacters(date->Second()) + u'Z';
}

QString FromUtcStamp(const QString& stamp, const ZoneBiases& biases) {
  QString day = stamp.mid(6, 2) + u'.' + stamp.mid(4, 2) + u'.' + stamp.left(4);
  if (!stamp.contains(u'T')) return day;
  bool isNumber = false;
  const int hour = stamp.mid(9, 2).toInt(&isNumber);
  if (!isNumber) return QString();
  return TwoCharacters(ShiftHour(hour, biases, -1)) + u':' + stamp.mid(11, 2) + u':' + stamp.mid(13, 2) + u' ' + day;
}

}  // namespace talnik
