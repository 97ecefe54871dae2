#pragma once

#include <QString>

namespace talnik {

/// What the desktop gives every program: its folders, the start with the session, opening things in other programs.
class Shell {
 public:
  virtual ~Shell() = default;

  /// The folder under which programs keep the user's data; empty when there is none.
  virtual QString LocalDataFolder() const = 0;

  /// The folder of the files installed beside this program, ending in a separator.
  virtual QString InstalledFolder() const = 0;

  /// True when the program starts with the session.
  virtual bool AutostartIsOn() const = 0;
  /// Enters the program for start with the session, hidden. False when it could not be written.
  virtual bool AutostartOn() = 0;
  virtual bool AutostartOff() = 0;

  /// Opens a file or page in the program the user has for it. False when nothing would take it.
  virtual bool Open(const QString& path) = 0;
};

}  // namespace talnik
