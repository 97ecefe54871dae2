#pragma once

#include "platform/TimeZone.h"

#include <QDateTime>
#include <QTimeZone>

namespace talnik {

class SystemTimeZone : public TimeZone {
 public:
  ZoneBiases Biases() const override;
};

/// The biases of `zone` at `moment`. Standard time is the lower of the offsets from now to a year on, so that a zone
/// whose law calls its winter time the exception reads like all others. DaylightBias is -60 where there is no daylight
/// time; it is not in force there.
ZoneBiases BiasesOf(const QTimeZone& zone, const QDateTime& moment);

}  // namespace talnik
