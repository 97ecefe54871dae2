#pragma once

#include "dates/Date.h"
#include "platform/TimeZone.h"

#include <QString>

namespace talnik {

/// The UTC stamp of a date text: "yyyymmddThhmmssZ", or "yyyymmdd" for a text without ":". Only the hour moves by the
/// biases, each rounded to whole hours; the date is not carried and the hour not wrapped.
QString ToUtcStamp(const QString& dateText, const ZoneBiases& biases, const Date& today);

/// The local text of a UTC stamp, time first ("09:30:00 05.01.2024"); "dd.mm.yyyy" for a stamp without "T".
QString FromUtcStamp(const QString& stamp, const ZoneBiases& biases);

}  // namespace talnik
