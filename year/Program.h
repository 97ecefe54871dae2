#pragma once

#include "calendar/frmMain.h"
#include "support/FakePlatform.h"

#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

namespace talnik::soak {

/// The settings of one run of the program that the year is about.
struct RunSettings {
  bool watched = true;
  int dingPeriod = 3;
  bool hidden = true;
};

/// The whole program, with its windows, over a store of its own; only the world around it is played. Its clock stands
/// still until it is set, and its main timer ticks when it is told to.
class Program {
 public:
  explicit Program(const QString& folder);
  ~Program();

  QString StorePath() const { return data_ + u"/talnik.MDB"; }
  void Start(const RunSettings& settings, const QDateTime& now);
  void End();
  void SetClock(const QDateTime& now);
  void Tick();
  /// Chooses a command of the menu; what opens is answered by `User` or, if it is a message, with Enter.
  void Choose(const char* command);
  /// Imports a CSV file past the file dialog.
  void Import(const QString& path);

  /// Answers a window that has opened and is ready: an alarm box when its sound has been heard.
  std::function<void(QWidget& window)> User;
  static void Press(QWidget& window, int key);
  /// Lets everything that is queued run.
  static void Settle();
  /// Strokes, alarms' sounds and times of day that were heard since the last call, with what `Note` has added.
  QStringList Heard();
  void Note(const QString& line);

 private:
  void LookForWindow();
  void Listen();

  QString folder_, data_;
  std::optional<test::FakeWorld> world_;
  std::unique_ptr<frmMain> main_;
  QTimer poll_;
  QList<QPointer<QWidget>> met_;
  qsizetype soundsBefore_ = 0;
  qsizetype sounds_ = 0;
  QStringList heard_;
};

}  // namespace talnik::soak
