#pragma once

#include "calendar/DayOverview.h"
#include "platform/TimeZone.h"
#include "shell/FocusSpeech.h"
#include "shell/Form.h"

#include <array>
#include <functional>

class QGroupBox;
class QPushButton;
class QRadioButton;

namespace talnik {

class ListBox;
class Recordset;
struct DeleteOutcome;

/// What the overview of a day works on besides the services of every window.
struct DayViewContext {
  Store& store;
  Date day;
  TimeZone& timeZone;
  QString recordFolder;
  int& recurrChoice;                    ///< the last answer to whether one occurrence or the series is meant
  std::function<void()> extendSeries;   ///< lets the series reach the day
  std::function<void()> registerAlarm;  ///< an alarm may be gone
  /// Opens the editor above `over` on the records of the day, the first ones stepped over.
  std::function<void(QWidget* over, int recordsBefore)> showTasks;
  /// Asks for the time of a new record of the day, with `suggested` as a beginning if it is there, and opens the
  /// editor.
  std::function<void(QWidget* over, const std::optional<Date>& suggested)> newTask;
};

/// "Denní přehled": the tasks of a day, or its tasks and the free time between them.
class frmDayView : public Form {
  Q_OBJECT

 public:
  frmDayView(FormServices& services, DayViewContext context, QWidget* parent = nullptr);

  /// Shows the window modally.
  void Open();

  /// Rebuilds the list for the chosen option.
  void GetSpareTime();

  QGroupBox* Frame1 = nullptr;
  std::array<QRadioButton*, 2> optFreeTime{};
  ListBox* List1 = nullptr;
  QPushButton* cmdInsert = nullptr;
  QPushButton* cmdGoTo = nullptr;
  QPushButton* cmdDelete = nullptr;
  QPushButton* cmdOK = nullptr;

 private:
  void BuildControls();
  QPushButton* MakeButton(const QString& name, const QString& caption, void (frmDayView::*click)());
  void ConnectList();
  bool ShowsFreeTime() const;
  const DayItem* Selected() const;
  QString SelectedLine() const;
  void SayLine();
  void ReturnToList();
  void PreviewNote();
  void List1_KeyDown(Key& key);
  void List1_KeyUp(Key& key);
  void optFreeTime_Click(int option);
  void cmdInsert_Click();
  void cmdGoTo_Click();
  void cmdDelete_Click();
  void cmdOK_Click() { accept(); }
  void DeleteItem(const DayItem& item);
  bool DeleteRow(Recordset& rows);
  bool DeleteRoot(const ScheduleRecord& root);
  bool Deleted(const std::function<DeleteOutcome()>& deletion);

  DayViewContext context_;
  OpeningTitle title_;
  QList<DayItem> items_;    ///< the lines of the list
  QList<DayItem> deleted_;  ///< deleted in this window
  int lineAtKeyDown_ = -1;
  bool optionSaid_ = false;  ///< in this turn of the event loop
};

}  // namespace talnik
