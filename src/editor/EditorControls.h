#pragma once

#include <QComboBox>
#include <QLabel>
#include <QPlainTextEdit>

namespace talnik {

/// A text box that takes no more characters than its field in the store holds. What it must refuse, typed or pasted,
/// it tells of at once, so that nothing is lost unheard at the save.
class NoteBox : public QPlainTextEdit {
  Q_OBJECT

 public:
  NoteBox(qsizetype size, QWidget* parent);

  /// The text exactly as it stands, lines ended by "\n".
  QString Text() const;
  /// Shows a text from the store, which may be longer than what can be typed.
  void Show(const QString& text);

 Q_SIGNALS:
  void Refused();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  void insertFromMimeData(const QMimeData* source) override;

 private:
  QString WhatFits(const QString& text);

  qsizetype size_;
};

/// A list to choose from, which tells when its lines are laid open and when they are put away.
class ChoiceList : public QComboBox {
  Q_OBJECT

 public:
  using QComboBox::QComboBox;
  void showPopup() override;
  void hidePopup() override;

 Q_SIGNALS:
  void Opened();
  void Closed();
};

/// A bell, which a click of the mouse reaches.
class BellPicture : public QLabel {
  Q_OBJECT

 public:
  BellPicture(const QColor& color, QWidget* parent);

 Q_SIGNALS:
  void Click();

 protected:
  void mouseReleaseEvent(QMouseEvent* event) override;
};

}  // namespace talnik
