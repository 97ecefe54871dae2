#pragma once

#include "shell/ControlEvents.h"
#include "shell/Speech.h"

#include <QString>

class QAbstractButton;

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

/// Lets a button say its caption when it gets the focus; a check box its state too, also when the user changes it.
/// An option answers every key.
void LetButtonSpeak(QAbstractButton* button, ControlEvents& events, Speech& speech, OpeningTitle& title);

}  // namespace talnik
