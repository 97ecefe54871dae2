#pragma once

#include "store/Store.h"

namespace talnik::statements {

/// The statements of the system. Every value from a user or a file is bound; "day" drops the time of its argument. Rows
/// with the same start come by status, then as they were added; rows without a stated order come as they were added. A
/// series is found by the part of a guid before its "_"; an empty one finds no row.

Statement All();                                              ///< every row
Statement AllByStart();                                       ///< every row, ORDER BY apptime
Statement Visible();                                          ///< editor mode 0: status below 8 or none
Statement VisibleFrom(const Date& day);                       ///< editor mode 1: from the day on, status below 8
Statement WithAlarmAfter(const Date& now);                    ///< editor mode 5: alarm on, start after the day of `now`
Statement Containing(const QString& text, const Date& from);  ///< editor mode 6: LIKE *text*, from the day on
Statement OfDay(const Date& day);           ///< begins, ends or lasts on the day, status below 8 or none
Statement OfDayAnyStatus(const Date& day);  ///< the same without the test of status
Statement CountOfDay(const Date& day);      ///< for Store::Number: the count of OfDay, by index
/// What begins in, ends in or lasts over the time from `from` to before `to`, any status, ORDER BY apptime; by index.
Statement Touching(const Date& from, const Date& to);
Statement StartingAt(const Date& moment);       ///< apptime is exactly the moment
Statement AlarmQueue();                         ///< pending alarms, the earliest first
Statement AlarmOn();                            ///< alarm True
Statement WithAlarmTime();                      ///< alarmtime not NULL
Statement WithAlarmAt(const Date& moment);      ///< alarmtime is exactly the moment
Statement NamingSound(const QString& wav);      ///< wav is exactly this text
Statement WithGuid(const QString& guid);        ///< guid is exactly this text
Statement OfSeries(const QString& guidOrBase);  ///< guid LIKE *base*, ORDER BY apptime
Statement OfSeriesBelow8(const QString& guidOrBase);
Statement OfSeriesWithStatus(const QString& guidOrBase, int status);
Statement OfSeriesNotRoot(const QString& guidOrBase);
Statement DeleteSeries(const QString& guidOrBase);
Statement Roots();               ///< status 9
Statement RootsWithSpawnTime();  ///< status 9 with a spawntime
Statement Occurrences();         ///< status 1
Statement RootsWithRule();       ///< status 9 with a rule, ORDER BY apptime
Statement Exceptions();          ///< status 2 and 8, ORDER BY apptime
Statement DeleteOccurrences();   ///< all rows of status 1
Statement DeleteOccurrencesOfDay(const QString& base, const Date& day);
Statement Before(const Date& day);  ///< start before the day
Statement DeleteBefore(const Date& day);
Statement DeleteDay(const Date& day);  ///< start after 0:00:00 and before 23:59:00, not roots
Statement DeleteAll();
Statement CountFrom(const Date& day);  ///< CountRecords 0 with a filter date
Statement CountAll();                  ///< CountRecords 0 without one, and 2
Statement CountAlarms();               ///< CountRecords 1

}  // namespace talnik::statements
