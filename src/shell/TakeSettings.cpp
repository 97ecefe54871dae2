#include "shell/TakeSettings.h"

#include "platform/HotKey.h"
#include "shell/HotKeyText.h"
#include "shell/SettingsValues.h"
#include "shell/cSetting.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <tuple>

namespace talnik {

namespace {

/// The settings that the dialog changes.
struct Chosen {
  QString AlarmSndFile, TimeOutSndFile, User;
  int AlarmLoop, AlarmOnNew, RepeatTimeout, HotKeyCall, ExitMode, AutSync, GoogleLog;
};

Chosen InForce(const cSetting& setting) {
  return {setting.AlarmSndFile,  setting.TimeOutSndFile, setting.User,     setting.AlarmLoop, setting.AlarmOnNew,
          setting.RepeatTimeout, setting.HotKeyCall,     setting.ExitMode, setting.AutSync,   setting.GoogleLog};
}

Chosen Wanted(const SettingsInput& input) {
  return {.AlarmSndFile = input.alarmSndFile,
          .TimeOutSndFile = input.timeOutSndFile,
          .User = input.user,
          .AlarmLoop = LenientNumber(input.alarmLoop),
          .AlarmOnNew = input.alarmOnNew,
          .RepeatTimeout = input.repeatTimeout ? 1 : 0,
          .HotKeyCall = input.newHotKey,
          .ExitMode = input.exitMode,
          .AutSync = LenientNumber(input.autSync),
          .GoogleLog = static_cast<int>(input.password.size())};
}

void Put(const Chosen& chosen, cSetting& setting, const SettingsHost& host) {
  setting.AlarmSndFile = chosen.AlarmSndFile;
  setting.TimeOutSndFile = chosen.TimeOutSndFile;
  setting.AlarmLoop = chosen.AlarmLoop;
  setting.AlarmOnNew = chosen.AlarmOnNew;
  setting.RepeatTimeout = chosen.RepeatTimeout;
  setting.HotKeyCall = chosen.HotKeyCall;
  setting.ExitMode = chosen.ExitMode;
  setting.AutSync = chosen.AutSync;
  host.SyncTimerSetting();
  setting.User = chosen.User;
  setting.GoogleLog = chosen.GoogleLog;
}

/// A sound that was just chosen must be a file; one that has long been missing is not asked about again.
bool IsNoSound(const QString& path, const QString& before) {
  return !path.isEmpty() && path != before && !QFileInfo(path).isFile();
}

bool SetAutostart(Shell& shell, bool on) {
  on ? shell.AutostartOn() : shell.AutostartOff();
  return shell.AutostartIsOn() == on;
}

}  // namespace

SettingsRefusal TakeSettings(const SettingsInput& input, cSetting& setting, SettingsHost& host) {
  const Chosen before = InForce(setting);
  const bool startedUp = host.shell.AutostartIsOn();
  for (const auto& [path, old, control] : {std::tuple(input.alarmSndFile, before.AlarmSndFile, "txtAlarmSnd"),
                                           std::tuple(input.timeOutSndFile, before.TimeOutSndFile, "txtTimeOutSnd")}) {
    if (IsNoSound(path, old))
      return {QCoreApplication::translate("frmSettings", "Zvukový soubor nebyl nalezen: ") + path, control};
  }
  if (!SetAutostart(host.shell, input.startUp)) {
    SetAutostart(host.shell, startedUp);
    return {QCoreApplication::translate("frmSettings", "Spuštění po startu nelze nastavit."), "chkStartUp"};
  }
  const bool newHotKey = input.newHotKey != before.HotKeyCall;
  if (newHotKey && !host.keyboardHook.Watch(input.newHotKey)) {
    host.keyboardHook.Watch(before.HotKeyCall);
    SetAutostart(host.shell, startedUp);
    return {HotKeyRefusedText(input.newHotKey), "txtHotKey"};
  }
  Put(Wanted(input), setting, host);
  if (!setting.SaveAppSettings()) {
    Put(before, setting, host);
    if (newHotKey) host.keyboardHook.Watch(before.HotKeyCall);
    SetAutostart(host.shell, startedUp);
    return {QCoreApplication::translate("frmSettings", "Nastavení nelze zapsat: ") + setting.PrimaryPath(), "cmdOK"};
  }
  if (!input.passwordChanged) return {};
  host.state.SettingsCancelled = false;
  QString reason;
  if (host.handOver(input.password, reason)) return {};
  return {QCoreApplication::translate("frmSettings", "Nastavení je uloženo, heslo se ale nepodařilo předat. ") + reason,
          "txtGoogleLoginPassword"};
}

}  // namespace talnik
