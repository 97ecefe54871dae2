#pragma once

#include "dates/MonthLines.h"
#include "shell/Form.h"

#include <array>
#include <memory>

class QLabel;
class QLineEdit;
class QPushButton;

namespace talnik {

class ListBox;
class TimeFieldPair;

/// The month list in a window of its own, with an hour and a minute, for choosing a date and time.
class frmPickDate : public Form {
  Q_OBJECT

 public:
  frmPickDate(FormServices& services, const CalendarNames& names, int tag, QWidget* parent = nullptr);
  ~frmPickDate() override;

  /// Shows the window modally on the day of `date`, with its hour and minute if `withTime`, with "00" otherwise.
  void Open(const Date& date, bool withTime);

  bool Cancelled = true;  ///< cleared by cmdOK
  Date Chosen;            ///< the date and time, when not cancelled

  ListBox* List1 = nullptr;
  QLabel* Label1 = nullptr;
  QPushButton* Command2 = nullptr;
  QPushButton* Command4 = nullptr;
  std::array<QLabel*, 2> lblTime{};
  std::array<QLineEdit*, 2> Text1{};
  QPushButton* cmdOK = nullptr;
  QPushButton* cmdCancel = nullptr;

 private:
  void BuildControls();
  void ConnectKeys();
  void List1_GotFocus();
  void List1_KeyDown(Key& key);
  void List1_KeyPress(Key& key);
  void List1_KeyUp(Key& key);
  void MoveWeek(bool forward);
  void MoveMonth(bool forward, bool byYear);
  void WalkOverEdge(bool forward);
  void SearchWeekDay(const QString& text, bool back);
  void MoveEaster(bool forward);
  void ShowDate(const Date& date);
  void SayMonthIfChanged(const QString& before);
  void cmdOK_Click();

  const CalendarNames& names_;
  std::unique_ptr<TimeFieldPair> fields_;
  Date CurrentDate;
  QString DigitBuffer;
  QString DayPrefix;
  bool SuppressClick = false;
  bool SkipKeyUp = false;
  bool TitleOnFocus = true;
};

}  // namespace talnik
