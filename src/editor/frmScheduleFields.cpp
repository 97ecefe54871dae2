#include "editor/EditorControls.h"
#include "editor/RecordSpeech.h"
#include "editor/SaveRecord.h"
#include "editor/frmSchedule.h"
#include "shell/VoiceDialog.h"
#include "store/Recordset.h"
#include "timetools/PickDate.h"
#include "timetools/SpinTimeField.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>

#include <utility>

namespace talnik {

void frmSchedule::FormKeyDown(Key& key) {
  const bool up = key.code == Qt::Key_PageUp;
  const bool toTheEnd = key.shift == Qt::ControlModifier;
  const bool endsRecording = KeyEndsRecording(key);
  if ((up || key.code == Qt::Key_PageDown) && (toTheEnd || key.Plain())) {
    key.Swallow();
    pageKeyDown_ = true;
    if (toTheEnd) return MoveTo(up ? Move::First : Move::Last);
    return MoveTo(up ? Move::Previous : Move::Next);
  }
  if (endsRecording || !key.Is(Qt::Key_Escape)) return;
  key.Swallow();
  bCancelled = true;
  Unload();
}

void frmSchedule::FormKeyUp(Key& key) {
  if (key.code != Qt::Key_PageUp && key.code != Qt::Key_PageDown) return;
  if (std::exchange(pageKeyDown_, false) && !bNew) SayRecordBrief();
}

void frmSchedule::MoveTo(Move move) {
  if (bNew || !Data1) return speech().Signal(Speech::Refused);
  const Change change = AskSaveChanges();
  if (change == Change::Stay) {
    pageKeyDown_ = false;
    return;
  }
  state().LastShownStart = Text3->text();
  MoveInList(move);
  ShowRecord();
  // The question has taken the release of the key, which would have said the record.
  if (change != Change::None && std::exchange(pageKeyDown_, false)) SayRecordBrief();
}

void frmSchedule::MoveInList(Move move) {
  switch (move) {
    case Move::First:
      return Data1->MoveFirst();
    case Move::Last:
      return Data1->MoveLast();
    case Move::Previous:
      Data1->MovePrevious();
      if (!Data1->Bof()) return;
      speech().Signal(Speech::Refused);
      return Data1->MoveFirst();
    case Move::Next:
      Data1->MoveNext();
      if (!Data1->Eof()) return;
      speech().Signal(Speech::Refused);
      return Data1->MoveLast();
  }
}

void frmSchedule::SayRecordBrief() {
  speech().Say(RecordBrief(state().LastShownStart, Text3->text(), Text1->Text(), Now()));
}

void frmSchedule::mnuText_Click() {
  const QString text = Text1->Text();
  if (text.isEmpty()) {
    dialogs().Tell(tr("Není textový záznam."));
    return Text1->setFocus();
  }
  Text1->setFocus();
  speech().Say(text);
}

void frmSchedule::mnuDate_Click() {
  speech().Say(Text3->text().isEmpty() ? tr("není záznam o čase") : Text3->text());
}

void frmSchedule::mnuDur_Click() {
  const bool hasEnd = Text4->isEnabled() && !Text4->text().isEmpty();
  speech().Say(hasEnd ? Text4->text() : tr("Není čas ukončení."));
}

void frmSchedule::mnuRecPos_Click() {
  if (bNew || !Data1) return speech().Signal(Speech::Refused);
  dialogs().Tell(PositionMessage(Data1->AbsolutePosition() + 1, RecordCount()));
}

void frmSchedule::mnuEditDuration_Click() {
  if (!Text4->isEnabled()) {
    Text4->setEnabled(true);
    cmdPickDate2->setEnabled(true);
    Text4->setText(Text3->text());
  }
  Text4->setFocus();
}

void frmSchedule::Text1_GotFocus() {
  if (std::exchange(bCloseOnFocus, false)) {
    // The window is still on its way to the screen here.
    QMetaObject::invokeMethod(
        this, [this] { Unload(); }, Qt::QueuedConnection);
    return;
  }
  title_.FocusRead(speech(), lblNote->text(), Text1->Text());
  // Showing the record has emptied the start of a new one. What the user has entered since stays.
  if (bNew && Text3->text().isEmpty()) Text3->setText(state().RecordDate);
}

void frmSchedule::Text5_KeyDown(Key& key) {
  const bool pastes = key.Is(Qt::Key_V, Qt::ControlModifier) || key.Is(Qt::Key_Insert, Qt::ShiftModifier);
  const int step = SpinStep(key);
  if (step != 0) Text5->setText(SpinLeadValue(Text5->text(), step, AlarmUnitIndex));
  if (step != 0 || pastes) key.Swallow();
}

void frmSchedule::Text5_KeyPress(Key& key) {
  if (key.Is(Qt::Key_Backspace) || key.Is(Qt::Key_Tab) || key.shift.testFlag(Qt::AltModifier)) return;
  key.Swallow();
  const QChar typed = key.text.size() == 1 ? key.text[0] : QChar();
  if (typed < u'0' || typed > u'9') return;
  QString text = Text5->text();
  int caret = Text5->hasSelectedText() ? Text5->selectionStart() : Text5->cursorPosition();
  TypeLeadDigit(text, caret, typed);
  Text5->setText(text);
  Text5->setCursorPosition(caret);
}

void frmSchedule::Text5_KeyUp(Key& key) {
  if (SpinStep(key) == 0) return;
  key.Swallow();
  speech().Say(Text5->text());
}

void frmSchedule::PickDateInto(QLineEdit* control) {
  PickDate(services(), context_.names, control, this);
}

void frmSchedule::cmdPickDate1_Click() {
  const bool wereEqual = Text4->isEnabled() && Text3->text() == Text4->text();
  PickDateInto(Text3);
  if (wereEqual) {
    Text4->setText(Text3->text());
  } else {
    WarnIfEndPrecedesStart();
  }
}

void frmSchedule::cmdPickDate2_Click() {
  PickDateInto(Text4);
  WarnIfEndPrecedesStart();
}

void frmSchedule::WarnIfEndPrecedesStart() {
  if (EndPrecedesStart(Text3->text(), Text4->text(), Now())) dialogs().Warn(EndBeforeStartText());
}

bool frmSchedule::CheckMyDate(const QString& text) {
  if (RecordCount() == 0 || IsDate(text, Now())) return true;
  dialogs().Tell(BadDateText());
  return false;
}

std::optional<Date> frmSchedule::DateOf(const QString& text) const {
  return CDate(text, Now());
}

void frmSchedule::SelectUserUnit(int index) {
  const QSignalBlocker quiet(cmbUserUnit);
  cmbUserUnit->setCurrentIndex(index);
  cmbUserUnit_Click();
}

void frmSchedule::SelectAlarmUnit(int index) {
  const QSignalBlocker quiet(cmbAlarmUnit);
  cmbAlarmUnit->setCurrentIndex(index);
  AlarmUnitIndex = index;
}

void frmSchedule::cmbUserUnit_Click() {
  UserUnitIndex = cmbUserUnit->currentIndex();
  const bool custom = UserUnitIndex == LeadCustom;
  ShowLeadControls(UserUnitIndex != LeadNone, custom, custom);
  if (custom) Text5->setText(u"0"_qs);
}

/// The list of leads takes the place of what is hidden.
void frmSchedule::ShowLeadControls(bool image, bool unit, bool value) {
  Image2->setVisible(image);
  cmbAlarmUnit->setVisible(unit);
  Text5->setEnabled(value);
}

AlarmLead frmSchedule::Lead() const {
  return {UserUnitIndex, AlarmUnitIndex, Text5->text(), false};
}

void frmSchedule::CheckAlarmTime() {
  if (Text3->text().isEmpty() || !chkAlarm->isChecked()) return;
  const auto start = DateOf(Text3->text());
  if (!start || *start >= Now()) return;
  chkAlarm->setChecked(false);
  dialogs().Tell(tr("Čas pro alarm již vypršel."));
}

void frmSchedule::Image2_Click() {
  CheckAlarmTime();
  chkAlarm->setChecked(!chkAlarm->isChecked());
  CheckAlarmTime();
}

}  // namespace talnik
