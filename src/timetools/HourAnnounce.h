#pragma once

#include "shell/Speech.h"

#include <QString>

#include <functional>
#include <optional>

namespace talnik {

class cSetting;

/// The minute to announce at `minute`; nothing when none is due in the period of the settings, or it has been
/// announced. Between two moments of the period `dingDone` is cleared.
std::optional<int> DueAnnouncement(const cSetting& setting, int minute, bool& dingDone);

/// How many times the clock strikes: 4 at minute 0, 1 at 15, 2 at 30, 3 at 45.
int StrokesOf(int minute);

/// Strikes and says the time, the first five characters of `timeText`, which is asked for after the last stroke. While
/// something else is spoken it does nothing and leaves `dingDone`, so that the next tick tries again.
void HourAnnounce(int minute, Speech& speech, const QString& dingFile, const std::function<QString()>& timeText,
                  bool& dingDone);

/// The announcement's part of a tick of the main timer, at any minute of the hour.
void AnnounceTick(int minute, const cSetting& setting, Speech& speech, const std::function<QString()>& timeText,
                  bool& dingDone);

}  // namespace talnik
