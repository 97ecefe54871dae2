#pragma once

#include "dates/MonthLines.h"
#include "shell/FocusSpeech.h"
#include "shell/Form.h"
#include "timetools/Countdown.h"
#include "timetools/TimeEntry.h"

#include <array>
#include <functional>
#include <memory>

class QLabel;
class QLineEdit;
class QPushButton;

namespace talnik {

class TimeFieldPair;

/// Moves the alarm in waiting: hours and minutes from now, or to the date of a text that is not empty.
using AlarmShifter = std::function<void(int hours, int minutes, const QString& dateText)>;

/// Two fields, hours and minutes, for four jobs: the machine's clock, the countdown, the delay of an alarm and the time
/// of a task.
class frmSetSysTime : public Form {
  Q_OBJECT

 public:
  /// The modes; all false is the time of a task. The opener sets all three before Open.
  bool SysTimeMode = false;
  bool CountdownMode = false;
  bool PostponeMode = false;

  /// `shiftAlarm` is needed in the postpone mode only.
  frmSetSysTime(FormServices& services, const CalendarNames& names, TimeEntry& entry, Countdown& countdown,
                AlarmShifter shiftAlarm, QWidget* parent = nullptr);
  ~frmSetSysTime() override;

  /// The time that the fields begin with, before Open; for the time of a task only.
  void Suggest(const Date& time);
  /// Loads the window for its mode and shows it modally.
  void Open();

  std::array<QLineEdit*, 2> Text1{};
  std::array<QLabel*, 2> Label1{};
  QPushButton* cmdSet = nullptr;
  QPushButton* cmdCancel = nullptr;
  QPushButton* cmdSetDate = nullptr;
  QPushButton* cmdDuration = nullptr;
  QLineEdit* txtDelayReceptor = nullptr;

 private:
  void BuildControls();
  void Load();
  void cmdSet_Click();
  void SetSystemTime();
  void SetCountdownTime();
  void SetDelay();
  void SetTaskTime();
  void cmdCancel_Click();
  void cmdSetDate_Click();
  void cmdDuration_Click();

  const CalendarNames& names_;
  TimeEntry& entry_;
  Countdown& countdown_;
  AlarmShifter shiftAlarm_;
  OpeningTitle title_;
  std::unique_ptr<TimeFieldPair> fields_;
  bool settingClock_ = false;
};

}  // namespace talnik
