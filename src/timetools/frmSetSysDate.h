#pragma once

#include "shell/FocusSpeech.h"
#include "shell/Form.h"

#include <array>
#include <functional>
#include <optional>

class QLabel;
class QLineEdit;
class QPushButton;

namespace talnik {

/// The leap years of the date dialog: divisible by 4 and not by 100, with no exception for 400.
bool IsLeapYear(int year);
/// The days of a month in that calendar; 0 for no month.
int MaxDay(int month, int year);

/// The first of the three values (0 day, 1 month, 2 year) that the date dialog refuses; nothing when they make a date.
std::optional<int> FirstWrongDateField(int day, int month, int year);

/// A day, a month and a year in three fields, to move the month list or to set the machine's date.
class frmSetSysDate : public Form {
  Q_OBJECT

 public:
  /// True sets the machine's date, false shows it in the month list. Set by the opener before Open.
  bool SetSystem = false;

  /// `showDate` moves the month list.
  frmSetSysDate(FormServices& services, std::function<void(const Date&)> showDate, QWidget* parent = nullptr);

  /// Shows the window modally with today's date.
  void Open();

  std::array<QLineEdit*, 3> Text1{};
  QLabel* lblDay = nullptr;
  QLabel* lblMonth = nullptr;
  QLabel* lblYear = nullptr;
  QPushButton* cmdSet = nullptr;
  QPushButton* cmdCancel = nullptr;

 private:
  void BuildControls();
  void ConnectField(const QLabel* label, int field);
  void cmdSet_Click();

  std::function<void(const Date&)> showDate_;
  OpeningTitle title_;
  bool settingClock_ = false;
};

}  // namespace talnik
