#include "alarms/AlarmShift.h"

namespace talnik {

ScheduleRecord ShiftedAlarm(ScheduleRecord row, const Date& from, const Date& to) {
  const std::int64_t minutes = (to.Seconds() - from.Seconds()) / 60;
  const auto moved = [minutes](const Date& moment) {
    return DateAdd(DateUnit::Minute, minutes, moment).value_or(moment);
  };
  row.alarmtime = to;
  // The first moment of the scale stands for no end, as nothing does.
  if (row.appdur && *row.appdur != Date()) row.appdur = moved(*row.appdur);
  if (row.apptime) {
    if (to == *row.apptime) {
      row.apptime = moved(*row.apptime);
    } else if (to > *row.apptime) {
      row.apptime = to;
    }
  }
  row.alarm = true;
  return row;
}

}  // namespace talnik
