#pragma once

#include "dates/MonthLines.h"
#include "shell/FocusSpeech.h"
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

  /// Shows the window modally on the day of `date`, with its hour and minute.
  void Open(const Date& date);

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
  void WalkOverEdge(bool forward);
  void MoveWeek(bool forward);
  bool MoveMonth(bool forward, bool byYear);
  void MoveAndSayMonth(bool forward, bool byYear);
  void SearchWeekDay(int key, bool back);
  void MoveToEaster(bool forward);
  void Show(const Date& date);
  void ShowDate(const Date& date);
  QString DayAndMonth() const;
  void cmdOK_Click();

  const CalendarNames& names_;
  OpeningTitle title_;
  std::unique_ptr<TimeFieldPair> fields_;
  Date currentDate_;  ///< a date in the month on show
  QString digitBuffer_;
  QString dayPrefix_;
  bool suppressClick_ = false;
  bool skipKeyUp_ = false;
};

}  // namespace talnik
