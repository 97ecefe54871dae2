#pragma once

#include "platform/KeyboardHook.h"
#include "platform/Registry.h"
#include "platform/Shell.h"

#include <QString>

#include <functional>

namespace talnik {

class cSetting;

/// What the settings dialog and its callers have in common.
struct SettingsState {
  bool OpenGoogleTab = false;      ///< the dialog opens where the login is set
  bool SettingsCancelled = false;  ///< it was left without OK
};

/// What the settings reach beyond their file.
struct SettingsHost {
  SettingsState& state;
  Shell& shell;
  KeyboardHook& keyboardHook;
  Registry& registry;
  std::function<void()> SyncTimerSetting;
  /// Gives the password to the agent. False, and the reason for the user, when it could not be given.
  std::function<bool(const QString& password, QString& reason)> handOver;
};

/// The dialog as it stands when OK is pressed.
struct SettingsInput {
  bool startUp = false;
  QString alarmSndFile;
  QString timeOutSndFile;
  QString alarmLoop;
  int alarmOnNew = 0;
  bool repeatTimeout = false;
  int newHotKey = 0;
  int exitMode = 0;
  QString autSync;
  QString user;
  QString password;
  bool passwordChanged = false;
};

/// Why the dialog stays open.
struct SettingsRefusal {
  QString message;                ///< empty when all is done
  const char* control = nullptr;  ///< by whose name the user is to go on
};

/// Takes over the dialog: the entry for the start with the session, the settings, which take effect at once, their
/// file, then the password. What cannot be taken leaves everything as it was; only the settings stay kept when the
/// password is all that failed.
SettingsRefusal TakeSettings(const SettingsInput& input, cSetting& setting, SettingsHost& host);

}  // namespace talnik
