#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace talnik {

/// A window of another program; handle 0 where there is none or the desktop does not tell.
struct ForeignWindowInfo {
  quint64 handle = 0;
  QString title = {};
};

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

  /// Opens a file or page in the program the user has for it. False when nothing would take it; where that shows only
  /// when it has been tried, `failed` is called then.
  virtual bool Open(const QString& path, std::function<void()> failed = {}) = 0;
  /// Starts a program, without a shell and without waiting for it. False when it cannot be started.
  virtual bool Start(const QString& program, const QStringList& arguments) = 0;
  /// Opens the settings of the desktop for people who cannot see the screen. False when it has none.
  virtual bool OpenAccessibilitySettings() { return false; }

  /// Gives the keyboard to a window of this program, whoever has it. Where the desktop does not allow that, nothing
  /// happens.
  virtual void BringToFront(quint64) {}
  /// The window of another program that has the keyboard.
  virtual ForeignWindowInfo WindowWithFocus() { return {}; }
  /// True until the window has been closed.
  virtual bool WindowExists(quint64) { return false; }
};

}  // namespace talnik
