#pragma once

#include "dates/Date.h"

#include <QList>
#include <QString>

#include <array>

namespace talnik {

/// One lap: its number from 1, the time from the start to it, and the time since the lap before (0 for the first).
struct Lap {
  int LapIndex = 0;
  Date LapTime;
  Date LapDelta;
};

/// "05" to "5", "00" to "0".
QString StripLeadingZero(const QString& text);

/// Hours, minutes and seconds in two digits, and the count of display ticks within the second.
using StopWatchFields = std::array<QString, 4>;

/// The fields as they are spoken: what is zero is left out, but for the last one.
QString StopWatchText(const StopWatchFields& fields);

/// The four fields joined by ":".
QString JoinedFields(const StopWatchFields& fields);

/// The laps and the final time as the text of a file.
QString LapFileText(const QList<Lap>& laps, const StopWatchFields& fields);

/// Measures as the difference of two readings of the clock, so a display that lags does not spoil the result.
class StopWatch {
 public:
  enum State { New = 0, Running = 1, Stopped = 2 };

  State WatchState = New;
  QList<Lap> Laps;
  StopWatchFields Fields;  ///< as they stand on the display

  StopWatch();

  /// Starts, stops, or starts again without the length of the pause. Every start forgets the laps.
  void StartOrStop(const Date& now);

  /// One tick of the display's timer. True when the second has changed.
  bool Tick(const Date& now);

  /// Counts from zero again; while stopped, from the next start on.
  void Reset(const Date& now);

  /// Adds a lap.
  void AddLap(const Date& now);

 private:
  std::int64_t Elapsed(const Date& now) const;
  void ShowZero();

  Date startTime_;
  Date stopTime_;
  int lastSecond_ = 0;
  int tickCount_ = 0;
  bool resetPending_ = false;
};

}  // namespace talnik
