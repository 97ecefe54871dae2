#pragma once

#include "store/ScheduleRecord.h"

namespace talnik {

/// A record whose alarm moves from `from` to `to`. Its end moves along; its start stays while the alarm still lies
/// before it, moves along when the alarm lands exactly on it, and follows the alarm that has passed it. It carries an
/// alarm again; that it has fired stays.
ScheduleRecord ShiftedAlarm(ScheduleRecord row, const Date& from, const Date& to);

}  // namespace talnik
