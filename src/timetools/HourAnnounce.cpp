#include "timetools/HourAnnounce.h"

#include "shell/cSetting.h"

#include <QPointer>

#include <array>

namespace talnik {

std::optional<int> DueAnnouncement(const cSetting& setting, int minute, bool& dingDone) {
  struct Period {
    bool on;
    int minutes;
  };
  const std::array<Period, 3> periods{
      {{setting.DingHourly, 60}, {setting.DingHalfHourly, 30}, {setting.DingQuarterHourly, 15}}};
  for (const Period& period : periods) {
    if (!period.on) continue;
    if (minute % period.minutes != 0) {
      dingDone = false;
    } else if (!dingDone) {
      return minute;
    }
  }
  return {};
}

int StrokesOf(int minute) {
  return minute == 0 ? 4 : minute / 15;
}

void HourAnnounce(int minute, Speech& speech, const QString& dingFile, const std::function<QString()>& timeText,
                  bool& dingDone) {
  if (speech.IsSpeaking()) return;
  // Set ahead of the strokes: the timer goes on while they are played.
  dingDone = true;
  const QPointer<Speech> alive(&speech);
  for (int stroke = 0; stroke < StrokesOf(minute) && alive; ++stroke) speech.PlaySoundWait(dingFile);
  if (alive) speech.SayPart(0, timeText().left(5));
}

void AnnounceTick(int minute, const cSetting& setting, Speech& speech, const std::function<QString()>& timeText,
                  bool& dingDone) {
  const auto due = DueAnnouncement(setting, minute, dingDone);
  if (due) HourAnnounce(*due, speech, setting.DingFile, timeText, dingDone);
}

}  // namespace talnik
