#pragma once

#include "editor/AlarmLead.h"
#include "editor/EditorState.h"
#include "platform/Recorder.h"
#include "recurrence/RecurrPopulate.h"
#include "shell/FocusSpeech.h"
#include "shell/Form.h"

#include <QHash>
#include <QPointer>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

class QAction;
class QBoxLayout;
class QCheckBox;
class QLabel;
class QLineEdit;
class QMenuBar;
class QPushButton;

namespace talnik {

class BellPicture;
class ChoiceList;
class MMControl;
class NoteBox;
class OwnMenus;
class Recordset;
struct DeleteOutcome;
struct EditorTexts;
struct RecordFields;

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
  enum class Save { Saved, Refused, Failed };
  enum class Change { None, Dropped, Saved, Stay };
  enum class Move { First, Previous, Next, Last };
  enum class RowWrite { Cancelled, Nothing, NewRecord, Plain, NewSeries, Exception, Root };

  // frmScheduleLayout.cpp: the controls and menus, and which handler each has.
  void BuildControls();
  QBoxLayout* BuildTextRow();
  QBoxLayout* BuildTimeRow();
  QBoxLayout* BuildAlarmRow();
  QBoxLayout* BuildPositionRow();
  QBoxLayout* BuildButtonRow();
  QPushButton* MakePicker(const QString& name, const QString& tip);
  QLineEdit* MakeField(const QString& name, const QString& accessibleName);
  void OrderTabs();
  void BuildMenus();
  void ConnectMenus();
  void ConnectButtons();
  void ConnectFields();
  void ConnectAlarmFields();
  void ConnectPageKeys();
  void AnnounceField(QWidget* control, std::function<QString()> prefix, std::function<QString()> text);
  void SetState(QAction* action, bool enabled);

  // frmSchedule.cpp: load, list, record on screen, unload.
  void LoadForm();
  void LoadNewRecord();
  void TellConflicts();
  void FillRecordset();
  void OpenList();
  void ShowRecord();
  void ShowPosition();
  void ShowFields(const ScheduleRecord& row);
  void ShowEnd(const QString& end);
  void ShowAlarm(const std::optional<Date>& alarm, const std::optional<Date>& start);
  void ShowNote(const QString& wav);
  bool Form_Unload();
  void Unload() { done(Rejected); }
  bool HasRow() const;
  qsizetype RecordCount() const;

  // frmScheduleFields.cpp: moving, reading, the fields.
  void FormKeyDown(Key& key);
  void FormKeyUp(Key& key);
  void MoveTo(Move move);
  void MoveInList(Move move);
  void SayRecordBrief();
  void mnuText_Click();
  void mnuDate_Click();
  void mnuDur_Click();
  void mnuRecPos_Click();
  void mnuEditDuration_Click();
  void Text1_GotFocus();
  void Text5_KeyDown(Key& key);
  void Text5_KeyPress(Key& key);
  void Text5_KeyUp(Key& key);
  void cmdPickDate1_Click();
  void cmdPickDate2_Click();
  void PickDateInto(QLineEdit* control);
  void WarnIfEndPrecedesStart();
  bool CheckMyDate(const QString& text);
  std::optional<Date> DateOf(const QString& text) const;
  void SelectUserUnit(int index);
  void SelectAlarmUnit(int index);
  void cmbUserUnit_Click();
  void ShowLeadControls(bool image, bool unit, bool value);
  AlarmLead Lead() const;
  void CheckAlarmTime();
  void Image2_Click();

  // frmScheduleSave.cpp: saving.
  EditorTexts Texts() const;
  Save SaveRecord();
  Save Write(const RecordFields& fields);
  RowWrite WhatToWrite();
  bool WriteRow(RowWrite write, const RecordFields& fields);
  bool WriteNewRecord(const RecordFields& fields);
  bool WriteException(const RecordFields& fields);
  bool WriteRoot(const RecordFields& fields);
  Change AskSaveChanges();
  bool IsChanged() const;
  QString AdoptRecording();
  void cmdOK_Click();
  void cmdStorno_Click();
  SpawnTime Spawning() const;

  // frmScheduleSeries.cpp: the rule of the record, deleting.
  void cmdRepeat_Click();
  bool EditSeries(const QString& newRule);
  bool IsSavedSeries() const;
  int AskWhichOnes(bool forEdit);
  void mnuDelete_Click();
  void DeleteByAnswer(int answer);
  void DeleteOne();
  bool Deleted(const std::function<DeleteOutcome()>& deletion, bool& closeForm);
  void RemoveNote(const QString& path);

  // frmSchedulePurge.cpp: removing what is old.
  void mnuDeleteOld_Click();
  bool Purge(const Date& day);

  // frmScheduleSound.cpp: the voice note.
  QString FreshRecording() const;
  void SetHasSound(bool hasSound);
  void mnuRec_Click();
  void cmdSound_Click();
  bool EndRecording();
  void ShowRecorded();
  void ShowNothingRecorded();
  bool KeyEndsRecording(Key& key);
  void OnRecordingEnded(Recorder::Ending ending);
  void mnuPlay_Click();
  void mnuSndDel_Click();
  bool DeleteNote(const QString& note);
  void ListWholeTable();

  EditorState& state() const { return context_.state; }
  QString& RepeatRule() const { return context_.state.Repeat.Repeat_Rule; }

  EditorContext context_;
  std::unique_ptr<Recordset> Data1;
  bool bNew = false;
  bool bCloseOnFocus = false;
  bool bCancelled = false;
  bool bHasSound = false;
  int AlarmUnitIndex = LeadMinutes;
  int UserUnitIndex = LeadNone;
  QString OrigTitle;
  QString OrigStart;
  QString OrigEnd;
  QString OrigAlarm;
  bool unloaded_ = false;
  bool pageKeyDown_ = false;
  std::optional<QString> ruleOfUnsaved_;  ///< chosen anew for a record whose series is not stored yet
  QString listTextBefore_;                ///< of the list with the focus, before its key
  OpeningTitle title_;
  QPointer<QWidget> focusBeforeRecording_;
  OwnMenus* menus_ = nullptr;
  QHash<QString, QAction*> menu_;  ///< the commands by their names

  QLabel* lblTime = nullptr;
  QLineEdit* Text3 = nullptr;  ///< start
  QPushButton* cmdPickDate1 = nullptr;
  QLineEdit* Text4 = nullptr;  ///< end
  QPushButton* cmdPickDate2 = nullptr;
  QLabel* lblNote = nullptr;
  NoteBox* Text1 = nullptr;  ///< the appointment's text
  QLabel* lblPos = nullptr;
  QLineEdit* txtPos = nullptr;
  QLabel* lblAlarm = nullptr;
  ChoiceList* cmbUserUnit = nullptr;
  QLineEdit* Text5 = nullptr;  ///< value of a custom lead
  ChoiceList* cmbAlarmUnit = nullptr;
  QPushButton* cmdPickDate3 = nullptr;
  QWidget* Picture1 = nullptr;
  QCheckBox* chkAlarm = nullptr;
  BellPicture* Image2 = nullptr;
  QPushButton* cmdRepeat = nullptr;
  QPushButton* cmdSound = nullptr;
  QPushButton* cmdOK = nullptr;
  QPushButton* cmdStorno = nullptr;
  QLineEdit* Text2 = nullptr;  ///< path of the voice note
  MMControl* MMControl1 = nullptr;
};

}  // namespace talnik
