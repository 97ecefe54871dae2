#include "editor/frmSchedule.h"

#include "editor/ConflictCheck.h"
#include "editor/EditorControls.h"
#include "editor/FieldText.h"
#include "editor/MMControl.h"
#include "editor/NoteFiles.h"
#include "editor/RecordList.h"
#include "editor/SaveRecord.h"
#include "shell/Paths.h"
#include "shell/VoiceDialog.h"
#include "shell/cSetting.h"
#include "store/Recordset.h"
#include "store/Statements.h"
#include "store/Text.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <utility>

namespace talnik {
namespace {

constexpr int NewRecordTag = 1722;
constexpr int BrowseTag = 1729;
constexpr qsizetype ShortestListToReturnTo = 2;

QString FieldText(const std::optional<Date>& moment) {
  return moment ? TrimSeconds(DateText(*moment)) : QString();
}

}  // namespace

frmSchedule::frmSchedule(FormServices& services, EditorContext context, QWidget* parent)
    : Form(services, u"frmSchedule"_qs, BrowseTag, parent), context_(std::move(context)) {
  MMControl1 = new MMControl(speech(), context_.recorder, this);
  BuildControls();
  BuildMenus();
  ConnectFields();
  ConnectButtons();
  ConnectMenus();
  events().FormKeyDown([this](Key& key) { FormKeyDown(key); });
  events().FormKeyUp([this](Key& key) { FormKeyUp(key); });
}

frmSchedule::~frmSchedule() = default;

void frmSchedule::Run() {
  LoadForm();
  if (unloaded_) return;
  if (!bCloseOnFocus) title_.Set(windowTitle());
  Text1->setFocus();
  ShowModal();
}

void frmSchedule::LoadForm() {
  cmdPickDate3->setEnabled(false);
  ShowEnd(QString());
  SelectUserUnit(LeadNone);
  SelectAlarmUnit(LeadMinutes);
  if (!state().RecordDate.isEmpty()) LoadNewRecord();
  if (!unloaded_) FillRecordset();
}

void frmSchedule::LoadNewRecord() {
  SetTag(NewRecordTag);
  bNew = true;
  // A search of before that finds nothing any more would close the form.
  state().FilterMode = ModeAll;
  txtPos->setEnabled(false);
  txtPos->hide();
  lblPos->hide();
  RepeatRule().clear();
  const int lead = services().setting.AlarmOnNew;
  SelectUserUnit(lead >= 0 && lead < cmbUserUnit->count() ? lead : int{LeadNone});
  state().RecordDate = TrimSeconds(state().RecordDate);
  Text3->setText(state().RecordDate);
  if (lead != LeadNone) Text5->setText(Text3->text());
  ShowNote(QString());
  if (!state().RecordDate.contains(u':')) {
    SelectAlarmUnit(LeadMinutes);
    SelectUserUnit(LeadNone);
  }
  if (state().HasEndPreset) ShowEnd(FieldText(state().EndPreset));
  TellConflicts();
}

void frmSchedule::TellConflicts() {
  const QString end = state().HasEndPreset ? DateText(state().EndPreset) : NoEndText();
  for (const QString& conflict : TimeConflicts(context_.store, state().RecordDate, end, Now())) {
    dialogs().Warn(conflict);
    if (unloaded_) return;
  }
}

void frmSchedule::FillRecordset() {
  RebuildOccurrences(context_.store, Spawning());
  OpenList();
  if (Data1) {
    ShowRecord();
  } else {
    dialogs().Tell(tr("Chyba databáze."));
  }
}

void frmSchedule::OpenList() {
  const auto statement = ListStatement(state(), Now());
  if (!statement) return;
  auto list = Recordset::Open(context_.store, *statement);
  if (list && state().FilterMode == ModeSearch && list->RecordCount() == 0) {
    dialogs().Tell(tr("Nenalezeno: ") + state().SearchText);
    state().FilterMode = ModeAll;
    bCloseOnFocus = true;
    list = Recordset::Open(context_.store, statements::Visible());
  }
  if (!list) return;
  Data1 = std::move(list);
  if (!PlaceOnRecord(*Data1, state(), Now())) speech().Signal(Speech::Refused);
}

bool frmSchedule::HasRow() const {
  return Data1 && !Data1->Bof() && !Data1->Eof();
}

qsizetype frmSchedule::RecordCount() const {
  return Data1 ? Data1->RecordCount() : 0;
}

void frmSchedule::ShowRecord() {
  Text1->Show(QString());
  Text2->clear();
  Text3->clear();
  if (!bNew) ShowFields(HasRow() ? Data1->Row() : ScheduleRecord());
  ShowPosition();
  setWindowTitle(Text3->text().isEmpty() ? tr("Plán") : tr("Plán - ") + Text3->text());
}

void frmSchedule::ShowPosition() {
  txtPos->setText(u"%1/%2"_qs.arg(Data1->AbsolutePosition() + 1).arg(RecordCount()));
}

void frmSchedule::ShowFields(const ScheduleRecord& row) {
  Text1->Show(TrimEndBlanks(row.appointment));
  OrigTitle = Text1->Text();
  OrigStart = FieldText(row.apptime);
  OrigEnd = FieldText(row.appdur);
  OrigAlarm = FieldText(row.alarmtime);
  Text3->setText(OrigStart);
  RepeatRule() = TrimBlanks(row.recur);
  cmdRepeat->setText(RepeatCaption(RepeatRule()));
  const bool mayRepeat = RepeatRule().isEmpty() || row.status != StatusChanged;
  cmdRepeat->setEnabled(mayRepeat);
  SetState(menu_.value(u"mnuRecurrEvent"_qs), mayRepeat);
  ShowAlarm(row.alarmtime, row.apptime);
  ShowEnd(OrigEnd);
  ShowNote(row.wav);
}

void frmSchedule::ShowEnd(const QString& end) {
  Text4->setText(end);
  Text4->setEnabled(!end.isEmpty());
  cmdPickDate2->setEnabled(!end.isEmpty());
}

void frmSchedule::ShowAlarm(const std::optional<Date>& alarm, const std::optional<Date>& start) {
  const AlarmLead lead = alarm ? LeadOfAlarm(*alarm, start.value_or(*alarm)) : AlarmLead();
  SelectAlarmUnit(lead.alarmUnit);
  SelectUserUnit(lead.userUnit);
  if (lead.userUnit != LeadCustom) return;
  Text5->setText(lead.value);
  cmbAlarmUnit->setVisible(!lead.freeMoment);
}

void frmSchedule::ShowNote(const QString& wav) {
  const QString note = StripAtNul(wav);
  Text2->setText(NotePath(note, context_.paths.RecordFolder));
  SetHasSound(!note.isEmpty());
}

void frmSchedule::done(int result) {
  if (!unloaded_) {
    if (!Form_Unload()) return;
    unloaded_ = true;
  }
  Form::done(result);
}

bool frmSchedule::Form_Unload() {
  MMControl1->Close();
  state().RecordDate.clear();
  bNew = false;
  context_.skipFocusSpeech();
  if (bCancelled || RecordCount() < ShortestListToReturnTo) return true;
  if (!CheckMyDate(Text3->text())) return false;
  if (const auto day = DateOf(Text3->text())) context_.showDate(day->DateValue());
  return true;
}

void frmSchedule::Discard() {
  if (unloaded_) return;
  for (QDialog* above : findChildren<QDialog*>()) above->close();
  bCancelled = true;
  Unload();
}

}  // namespace talnik
