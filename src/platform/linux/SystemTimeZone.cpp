#include "platform/linux/SystemTimeZone.h"

#include <algorithm>

namespace talnik {

namespace {

constexpr int SecondsPerMinute = 60;
constexpr int UsualDaylightBias = -60;

}  // namespace

ZoneBiases SystemTimeZone::Biases() const {
  return BiasesOf(QTimeZone::systemTimeZone(), QDateTime::currentDateTime());
}

ZoneBiases BiasesOf(const QTimeZone& zone, const QDateTime& moment) {
  const int now = zone.isValid() ? zone.offsetFromUtc(moment) : moment.offsetFromUtc();
  int lowest = now;
  int highest = now;
  if (zone.isValid() && zone.hasTransitions()) {
    for (const QTimeZone::OffsetData& change : zone.transitions(moment, moment.addYears(1))) {
      lowest = std::min(lowest, change.offsetFromUtc);
      highest = std::max(highest, change.offsetFromUtc);
    }
  }
  ZoneBiases biases;
  biases.Bias = -lowest / SecondsPerMinute;
  biases.DaylightBias = highest == lowest ? UsualDaylightBias : (lowest - highest) / SecondsPerMinute;
  biases.DaylightInForce = now > lowest;
  return biases;
}

}  // namespace talnik
