#pragma once

#include "calendar/NameDays.h"
#include "dates/Date.h"

#include <QString>

namespace talnik {

class Dialogs;
class NoteBox;
class Speech;
struct MonthView;

/// The field with the name days of the selected day, and the question whether what was typed into it is to be kept.
class NamesField {
 public:
  NamesField(NoteBox* txtNames, NameDays& names, MonthView& view, Speech& speech, Dialogs& dialogs);

  /// Shows the names of `day`. What the user has typed for another day is asked about before.
  void ShowNameOfDay(const Date& day);

  void GotFocus();
  void Change();
  void LostFocus();
  /// Keeps what the field holds for the day that it shows.
  void Keep();
  /// Asks whether changes are to be kept, if there are any.
  void AskAboutChanges();

  bool NamesEdited = false;
  /// True when names were changed since the start.
  bool NamesChanged = false;

 private:
  void SetText(const QString& text);

  NoteBox* txtNames_;
  NameDays& names_;
  MonthView& view_;
  Speech& speech_;
  Dialogs& dialogs_;
  Date day_;
  QString savedNames_;
  bool asking_ = false;
};

}  // namespace talnik
