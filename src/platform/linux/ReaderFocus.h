#pragma once

#include <QString>
#include <QStringList>

class QAccessibleInterface;

namespace talnik {

/// What the screen reader says by itself of where the user is.
struct ReaderFocus {
  const void* control = nullptr;  ///< tells one from another; null where no window of ours has the keyboard
  bool inPopup = false;           ///< a menu or an open list, of which the reader says every line
  bool isText = false;            ///< a text field, of which it says every move and every change by typing
  QString value;                  ///< the text of a text field
  QStringList words;  ///< names of the window, the groups around the control and itself, its line, its state
};

ReaderFocus LookAtFocus();

/// The control with the keyboard, or its line; null where there is none.
QAccessibleInterface* FocusedForReader();

/// What is left of `text` to be told when the reader has said the words.
QString WhatIsLeft(const QString& text, QStringList words);

}  // namespace talnik
