#pragma once

#include "shell/FocusSpeech.h"
#include "shell/Form.h"

class QPushButton;

namespace talnik {

/// Answers of frmDeleteRecurrentEvent.
enum RecurrAnswer { RecurrNone = 0, RecurrOnlyThis = 1, RecurrAll = 2 };

/// Asks whether one occurrence or the whole series is meant. The answer is left in `recurrChoice`; closing the window
/// by its frame leaves that as it was.
class frmDeleteRecurrentEvent : public Form {
  Q_OBJECT

 public:
  frmDeleteRecurrentEvent(FormServices& services, int& recurrChoice, QWidget* parent = nullptr);

  /// The caption when a change is asked about instead of a deletion.
  void SetCaptionForEdit();
  void Run();

  QPushButton* cmdDelSingle;
  QPushButton* cmdAll;
  QPushButton* cmdCancel;

 private:
  void Answer(int choice);

  int& recurrChoice_;
  OpeningTitle title_;
};

}  // namespace talnik
