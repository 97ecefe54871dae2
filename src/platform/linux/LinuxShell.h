#pragma once

#include "platform/Shell.h"

namespace talnik {

class LinuxShell : public Shell {
 public:
  /// `program` stands in for the path of the running program.
  explicit LinuxShell(QString program = {});

  QString LocalDataFolder() const override;
  /// "share/talnik/" beside the folder of the program where it is installed, in that folder where it was built.
  QString InstalledFolder() const override;
  bool AutostartIsOn() const override;
  bool AutostartOn() override;
  bool AutostartOff() override;
  bool Open(const QString& path, std::function<void()> failed = {}) override;
  bool Start(const QString& program, const QStringList& arguments) override;
  bool OpenAccessibilitySettings() override;
  void BringToFront(quint64 window) override;
  ForeignWindowInfo WindowWithFocus() override;
  bool WindowExists(quint64 handle) override;

 private:
  QString Program() const;

  QString program_;
};

/// One word of an Exec line of a desktop entry, quoted so that it is read back as it stands.
QString ExecWord(const QString& word);

}  // namespace talnik
