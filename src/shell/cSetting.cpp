#include "shell/cSetting.h"

#include "dates/LeadingNumber.h"

#include <cstdlib>

namespace talnik {
namespace {

constexpr qsizetype LongestValue = 1023;

const QString InfoSection = u"Info"_qs;
const QString VoiceSection = u"Voice"_qs;
const QString ApplicationSection = u"Application"_qs;

}  // namespace

QString cSetting::GetStr(const QString& section, const QString& key, const QString& defaultText) const {
  const bool preset = !secondaryPath_.isEmpty() && profile_.SectionExists(secondaryPath_, section);
  const auto text = profile_.Text(preset ? secondaryPath_ : primaryPath_, section, key);
  return text ? text->left(LongestValue) : defaultText;
}

int cSetting::GetInt(const QString& section, const QString& key, const QString& defaultText) const {
  const QString text = GetStr(section, key, defaultText);
  // It wraps at 32 bits.
  constexpr qint64 most = qint64{1} << 53;
  return static_cast<int>(static_cast<quint32>(LeadingNumber(text.isEmpty() ? defaultText : text, most)));
}

void cSetting::Init(const QString& primaryPath, const QString& secondaryPath, const QString& familyFolder) {
  primaryPath_ = primaryPath;
  secondaryPath_ = secondaryPath;
  const auto application = [this](const QString& key, const QString& fallback) {
    return GetInt(ApplicationSection, key, fallback);
  };
  const auto sound = [&](const QString& key, const QString& file) {
    return GetStr(ApplicationSection, key, familyFolder + u"sound/"_qs + file);
  };

  InfoTextSize = GetInt(InfoSection, u"TextSize"_qs, u"20"_qs);
  Style = GetInt(InfoSection, u"Style"_qs, u"2"_qs);
  VoiceName = GetStr(VoiceSection, u"Name"_qs, u"Male"_qs);
  Volume = GetInt(VoiceSection, u"Volume"_qs, u"50"_qs);
  Rate = GetInt(VoiceSection, u"Rate"_qs, u"0"_qs);
  Pitch = GetInt(VoiceSection, u"Pith"_qs, u"0"_qs);
  Speaker = GetInt(VoiceSection, u"Speaker"_qs, u"2"_qs);
  User = GetStr(ApplicationSection, u"User"_qs, QString());
  Pass = GetStr(ApplicationSection, u"GoogleLoginPassword"_qs, QString());
  AlarmSndFile = sound(u"AlarmSndFile"_qs, u"alarm.wav"_qs);
  TimeOutSndFile = sound(u"TimeOutSndFile"_qs, u"timer.wav"_qs);
  CopyFromFile = sound(u"CopyFromFile"_qs, u"start.wav"_qs);
  DingFile = sound(u"DingFile"_qs, u"clockbeat.wav"_qs);
  AlarmWatch = application(u"AlarmWatch"_qs, u"1"_qs);
  AlarmLoop = application(u"AlarmLoop"_qs, u"3"_qs);
  RepeatTimeout = application(u"RepeatTimeout"_qs, u"0"_qs);
  AlarmOnNew = application(u"AlarmOnNew"_qs, u"1"_qs);
  ExitMode = application(u"ExitMode"_qs, u"0"_qs);
  AutSync = application(u"AutSync"_qs, u"0"_qs);
  SourceRule = application(u"SourceRule"_qs, u"1"_qs);
  SetDingPeriod(application(u"DingPeriod"_qs, u"3"_qs));
  DayViewFreeTime = application(u"DayViewFreeTime"_qs, u"0"_qs);
  HotKeyCall = application(u"HotKeyCall"_qs, u"0"_qs);
  GoogleLog = application(u"GoogleLog"_qs, u"0"_qs);

  // An installer asks for the start with the session, once, by leaving this key.
  if (!GetStr(ApplicationSection, u"StartUp"_qs, QString()).isEmpty()) {
    shell_.AutostartOn();
    profile_.Write(primaryPath_, {{ApplicationSection, u"StartUp"_qs, std::nullopt}});
  }
}

void cSetting::SetDingPeriod(int period) {
  dingPeriod_ = period;
  if (period == 0) DingHourly = true;
  if (period == 1) DingHalfHourly = true;
  if (period == 2) DingQuarterHourly = true;
}

bool cSetting::SaveAppSettings() {
  const auto text = [](const QString& key, const QString& value) {
    return Profile::Entry{ApplicationSection, key, value};
  };
  const auto number = [&text](const QString& key, int value) { return text(key, QString::number(value)); };
  return profile_.Write(
      primaryPath_,
      {text(u"User"_qs, User), text(u"AlarmSndFile"_qs, AlarmSndFile), text(u"TimeOutSndFile"_qs, TimeOutSndFile),
       text(u"CopyFromFile"_qs, CopyFromFile), number(u"AlarmLoop"_qs, AlarmLoop), number(u"AlarmWatch"_qs, AlarmWatch),
       number(u"RepeatTimeout"_qs, RepeatTimeout), number(u"AlarmOnNew"_qs, AlarmOnNew),
       number(u"ExitMode"_qs, ExitMode), number(u"AutSync"_qs, AutSync), number(u"SourceRule"_qs, SourceRule),
       number(u"DingPeriod"_qs, dingPeriod_), text(u"DingFile"_qs, DingFile),
       number(u"DayViewFreeTime"_qs, DayViewFreeTime), number(u"HotKeyCall"_qs, HotKeyCall)});
}

bool cSetting::SaveVoiceSettings() {
  return profile_.Write(primaryPath_, {{VoiceSection, u"Name"_qs, VoiceName},
                                       {VoiceSection, u"Volume"_qs, QString::number(Volume)},
                                       {VoiceSection, u"Pith"_qs, QString::number(Pitch)},
                                       {VoiceSection, u"Rate"_qs, QString::number(Rate)}});
}

bool cSetting::SaveGeneralSetting(const QString& path) {
  const qint64 size = std::llabs(InfoTextSize);
  return profile_.Write(path, {{InfoSection, u"TextSize"_qs, QString::number(size)}});
}

}  // namespace talnik
