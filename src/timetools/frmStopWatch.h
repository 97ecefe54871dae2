#pragma once

#include "platform/CodePage.h"
#include "platform/Registry.h"
#include "shell/FocusSpeech.h"
#include "shell/Form.h"
#include "timetools/StopWatch.h"

#include <array>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTimer;

namespace talnik {

/// A stopwatch with a spoken read-out, laps and a tick each second.
class frmStopWatch : public Form {
  Q_OBJECT

 public:
  /// The registry keeps whether the stopwatch ticks; saved laps are written in the code page.
  frmStopWatch(FormServices& services, Registry& registry, const CodePage& codePage, QWidget* parent = nullptr);
  ~frmStopWatch() override;

  /// A new stopwatch.
  void InitMe();
  /// Shows the window modally.
  void Open();

  std::array<QLineEdit*, 4> Text1{};
  QLabel* lblHour = nullptr;
  QLabel* lblMinute = nullptr;
  QPushButton* cmdSet = nullptr;
  QPushButton* cmdLapTime = nullptr;
  QPushButton* cmdSay = nullptr;
  QPushButton* cmdReset = nullptr;
  QCheckBox* chkSound = nullptr;
  QPushButton* cmdCancel = nullptr;
  QTimer* Timer1 = nullptr;

 private:
  void BuildControls();
  void ConnectControls();
  void ShowFields();
  void cmdSet_Click();
  void cmdLapTime_Click();
  void cmdSay_Click();
  void cmdReset_Click();
  void Timer1_Timer();

  Registry& registry_;
  const CodePage& codePage_;
  OpeningTitle title_;
  StopWatch watch_;
  bool playTick_ = true;
  QString tickFile_;
};

}  // namespace talnik
