#include "calendar/NamesField.h"

#include "calendar/MonthView.h"
#include "editor/EditorControls.h"
#include "shell/Speech.h"
#include "shell/VoiceDialog.h"

#include <QCoreApplication>
#include <QTextCursor>

#include <utility>

namespace talnik {

NamesField::NamesField(NoteBox* txtNames, NameDays& names, MonthView& view, Speech& speech, Dialogs& dialogs)
    : txtNames_(txtNames), names_(names), view_(view), speech_(speech), dialogs_(dialogs) {}

void NamesField::SetText(const QString& text) {
  txtNames_->Show(text);
  NamesEdited = false;
}

void NamesField::ShowNameOfDay(const Date& day) {
  if (day != day_) AskAboutChanges();
  // What is being typed for this very day stays; the month list refreshes the field also when its day has not moved.
  if (NamesEdited) return;
  day_ = day;
  SetText(names_.NameOfDay(day.Month(), day.Day()));
}

void NamesField::GotFocus() {
  view_.SkipFocusSpeech = false;
  // Changes wait here only while another window had the keyboard; they are still to be asked about.
  if (!NamesEdited) savedNames_ = txtNames_->toPlainText();
  speech_.FocusRead(QString(), QCoreApplication::translate("NamesField", "Svátky ") + txtNames_->toPlainText());
  txtNames_->moveCursor(QTextCursor::Start);
  view_.TitleOnFocus = false;
}

void NamesField::Change() {
  NamesEdited = true;
}

void NamesField::LostFocus() {
  AskAboutChanges();
}

void NamesField::AskAboutChanges() {
  if (!NamesEdited || asking_) return;
  asking_ = true;
  const bool keep =
      dialogs_.Ask(QCoreApplication::translate("NamesField", "Uložit změny svátků?"), Dialogs::Default::Second);
  asking_ = false;
  if (keep) {
    Keep();
  } else {
    SetText(savedNames_);
  }
}

void NamesField::Keep() {
  NamesEdited = false;
  if (names_.SetNameOfDay(day_.Month(), day_.Day(), txtNames_->toPlainText())) {
    NamesChanged = true;
    savedNames_ = txtNames_->toPlainText();
  } else {
    dialogs_.Tell(QCoreApplication::translate("NamesField", "Databáze jmen není dostupná"));
  }
}

}  // namespace talnik
