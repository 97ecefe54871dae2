#pragma once

#include "platform/Profile.h"
#include "platform/Shell.h"

#include <QString>

namespace talnik {

/// The user's settings, mirrored to "talnik.ini". Changes stay in memory until a Save call.
class cSetting {
 public:
  cSetting(Profile& profile, Shell& shell) : profile_(profile), shell_(shell) {}

  /// Reads all keys; `secondaryPath` may name a preset file whose sections win as a whole. `familyFolder` (with its
  /// slash) is the root of the default sounds.
  void Init(const QString& primaryPath, const QString& secondaryPath, const QString& familyFolder);

  /// False when the file could not be written; the old file is left then.
  bool SaveAppSettings();
  bool SaveVoiceSettings();
  bool SaveGeneralSetting(const QString& path);

  /// The file that is read and written.
  const QString& PrimaryPath() const { return primaryPath_; }

  int InfoTextSize = 20;
  int Style = 2;
  QString VoiceName;
  int Volume = 50;
  int Rate = 0;
  int Pitch = 0;
  int Speaker = 2;  ///< 0 our own voice, 1 the screen reader, 2 the screen reader while one is running
  QString User;
  QString Pass;
  QString AlarmSndFile;
  QString TimeOutSndFile;
  QString CopyFromFile;
  QString DingFile;
  int AlarmWatch = 1;     ///< 1 or more: alarms ring
  int AlarmLoop = 3;      ///< times the alarm sounds; 0 without end
  int RepeatTimeout = 0;  ///< 1: the countdown's sound repeats
  int AlarmOnNew = 1;     ///< index of the lead preset for a new record
  int ExitMode = 0;       ///< 0 ask, 1 exit, 2 hide
  int AutSync = 0;        ///< minutes; 0 is off
  int SourceRule = 1;
  int DayViewFreeTime = 0;
  int HotKeyCall = 0;
  int GoogleLog = 0;

  /// 0 on the hour, 1 on the half hour too, 2 every quarter, 3 never. Raises the matching flag and lowers none.
  int DingPeriod() const { return dingPeriod_; }
  void SetDingPeriod(int period);
  bool DingHourly = false;
  bool DingHalfHourly = false;
  bool DingQuarterHourly = false;

 private:
  QString GetStr(const QString& section, const QString& key, const QString& defaultText) const;
  int GetInt(const QString& section, const QString& key, const QString& defaultText) const;

  Profile& profile_;
  Shell& shell_;
  QString primaryPath_;
  QString secondaryPath_;
  int dingPeriod_ = 3;
};

}  // namespace talnik
