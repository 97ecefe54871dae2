#pragma once

#include "shell/ControlEvents.h"
#include "shell/Speech.h"

#include <QString>

class QAbstractButton;
class QComboBox;
class QLabel;
class QRadioButton;

namespace talnik {

/// The title of a window, said once, ahead of the first control that gets the focus.
class OpeningTitle {
 public:
  void Set(const QString& title) { title_ = title; }

  /// Reads a control that just got the focus, behind the title if that has not been said yet.
  void FocusRead(Speech& speech, const QString& prefix, const QString& text, int selLength = 0);

 private:
  QString title_;
};

/// Lets an option answer every key, and Tab go to the chosen one of its group.
void LetOptionAnswer(QRadioButton* option, ControlEvents& events, Speech& speech);

/// Lets a button say its caption when it gets the focus; a check box its state too, also when the user changes it. An
/// option is let answer besides.
void LetButtonSpeak(QAbstractButton* button, ControlEvents& events, Speech& speech, OpeningTitle& title);

/// Lets a list to choose from say its label (none where it is null) and its line when it gets the focus, and its line
/// when the user changes it; a key that cannot change it is answered too.
void LetListSpeak(QComboBox* list, const QLabel* label, ControlEvents& events, Speech& speech, OpeningTitle& title);

}  // namespace talnik
