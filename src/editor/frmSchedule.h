#pragma once

#include "editor/AlarmLead.h"
#include "editor/EditorState.h"
#include "shell/Form.h"

#include <QString>

#include <memory>

class QAction;
class QBoxLayout;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QMenuBar;
class QPushButton;

namespace talnik {

class NoteBox;
class Recordset;
struct RecordFields;
struct SavePlan;

/// "Plán": the form in which a record is created, read and changed. It opens for a new record
/// (EditorState::RecordDate) or on a list of records (EditorState::FilterMode), one at a time.
class frmSchedule : public Form {
  Q_OBJECT

 public:
  frmSchedule(FormServices& services, EditorContext context, QWidget* parent = nullptr);
  ~frmSchedule() override;

  /// Loads the form, telling first with what a new record collides, and shows it until it is closed.
  void Run();

  /// Closes the form whatever state it is in; what was typed is dropped.
  void Discard();

 public Q_SLOTS:
  /// Every way of closing ends here; it is refused while the start is no date.
  void done(int result) override;

 private:
  enum class Save { Saved, Refused, BadDate, Failed };
  enum class Change { None, Dropped, Saved, Stay };

  // Controls and menus.
  void BuildControls();
  void BuildTextRows(QBoxLayout* rows);
  void BuildAlarmRow(QBoxLayout* rows);
  void BuildButtonRow(QBoxLayout* rows);
  void BuildMenus();
  void ConnectFields();
  void ConnectAlarmFields();
  void ConnectKeys();
  void ConnectMenus();
  void AnnounceOnFocus();
  void OrderTabs();

  // Life.
  void LoadForm();
  void LoadNewRecord();
  bool FillRecordset();
  void OpenList();
  void ShowRecord();
  void ShowFields(const ScheduleRecord& row);
  void ShowEnd(const std::optional<Date>& end);
  void ShowAlarm(const std::optional<Date>& alarm);
  void ShowPosition();
  bool Form_Unload();
  void Unload();
  bool HasRow() const;
  qsizetype RecordCount() const;

  // Moves and reading.
  enum class Move { First, Previous, Next, Last };
  void MoveTo(Move move);
  void SayRecordBrief();
  void FormKeyDown(Key& key);
  void FormKeyUp(Key& key);
  void mnuText_Click();
  void mnuDate_Click();
  void mnuDur_Click();
  void mnuRecPos_Click();
  void mnuEditDuration_Click();

  // Fields.
  void Text1_GotFocus();
  void Text5_KeyDown(Key& key);
  void Text5_KeyPress(Key& key);
  void Text5_KeyUp(Key& key);
  void cmdPickDate1_Click();
  void cmdPickDate2_Click();
  void PickDateInto(QLineEdit* control);
  void WarnIfEndPrecedesStart();
  bool CheckMyDate(const QString& text);
  void SetUserUnit(int index);
  void SetAlarmUnit(int index);
  void cmbUserUnit_Click();
  void ShowLeadControls(bool image, bool unit, bool value);
  void CheckAlarmTime();
  void Image2_Click();
  AlarmLead Lead() const;
  std::optional<Date> DateOf(const QString& text) const;
  QString Text1Text() const;

  // Saving and deleting.
  Save SaveRecord();
  Save Write(const RecordFields& fields);
  Save WriteSeriesMember(const RecordFields& fields);
  Save EditRoot(const RecordFields& fields);
  Save Outcome(bool written);
  Change AskSaveChanges();
  bool IsChanged() const;
  void cmdOK_Click();
  void cmdStorno_Click();
  void cmdRepeat_Click();
  bool EditSeries(const QString& newRule);
  void SetRepeatEnabled(bool enabled);
  void mnuDelete_Click();
  void DeleteFromSeries(bool wholeSeries);
  void FinishDelete(bool closeForm, bool alarmsTouched, const QString& notePath);
  int AskWhichOnes(bool forEdit);
  void TellStoreFailed();
  SpawnTime Spawning() const;

  EditorState& state() const { return context_.state; }
  QString& RepeatRule() const { return context_.state.Repeat.Repeat_Rule; }

  EditorContext context_;
  std::unique_ptr<Recordset> Data1;
  bool bNew = false;
  bool bCloseOnFocus = false;
  bool bCancelled = false;
  bool bHasSound = false;
  int AlarmUnitIndex = 0;
  int UserUnitIndex = 0;
  QString OrigTitle;
  QString OrigStart;
  QString OrigEnd;
  QString OrigAlarm;
  int RecurrChoice = 0;
  bool loaded_ = false;
  bool unloaded_ = false;
  bool opening_ = true;  ///< the first focus does not cut the title
  bool paged_ = false;   ///< a page key is down
  QString unitBefore_;   ///< the text of a list when its key went down
  QMenuBar* menuBar_ = nullptr;

  QLabel* lblTime = nullptr;
  QLineEdit* Text3 = nullptr;
  QPushButton* cmdPickDate1 = nullptr;
  QLineEdit* Text4 = nullptr;
  QPushButton* cmdPickDate2 = nullptr;
  QLabel* lblNote = nullptr;
  NoteBox* Text1 = nullptr;
  QLabel* lblPos = nullptr;
  QLineEdit* txtPos = nullptr;
  QLabel* lblAlarm = nullptr;
  QComboBox* cmbUserUnit = nullptr;
  QLineEdit* Text5 = nullptr;
  QComboBox* cmbAlarmUnit = nullptr;
  QPushButton* cmdPickDate3 = nullptr;
  QWidget* Picture1 = nullptr;
  QCheckBox* chkAlarm = nullptr;
  QLabel* Image2 = nullptr;
  QPushButton* cmdRepeat = nullptr;
  QPushButton* cmdSound = nullptr;
  QPushButton* cmdOK = nullptr;
  QPushButton* cmdStorno = nullptr;
  QLineEdit* Text2 = nullptr;

  QAction* mnuText = nullptr;
  QAction* mnuDate = nullptr;
  QAction* mnuDur = nullptr;
  QAction* mnuRecPos = nullptr;
  QAction* mnuSaveAndExit = nullptr;
  QAction* mnuExit = nullptr;
  QAction* mnuDelete = nullptr;
  QAction* mnuDeleteOld = nullptr;
  QAction* mnuEditDuration = nullptr;
  QAction* mnuRecurrEvent = nullptr;
  QAction* mnuFirst = nullptr;
  QAction* mnuPrev = nullptr;
  QAction* mnuNext = nullptr;
  QAction* mnuLast = nullptr;
  QAction* mnuRec = nullptr;
  QAction* mnuPlay = nullptr;
  QAction* mnuSndDel = nullptr;
};

}  // namespace talnik
