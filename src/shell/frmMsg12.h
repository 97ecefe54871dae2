#pragma once

#include "shell/Form.h"

#include <QTimer>

class QPlainTextEdit;

namespace talnik {

/// A message or a question in large print, which is read when it opens and again by Space.
class frmMsg12 : public Form {
  Q_OBJECT

 public:
  explicit frmMsg12(FormServices& services, QWidget* parent = nullptr);

  /// Sets the captions of the buttons.
  void PrepereForm();
  void SetMessage(const QString& message, const QString& caption);
  /// One OK button in place of yes and no.
  void OfferOnlyOK();
  /// Enter in the message answers No.
  void AnswerNoByEnter();
  /// Lets the message close by itself when it has been read to its end; a user who begins to read keeps it.
  void VoiceWait() { voiceWaitMode_ = true; }
  void SetTag(int tag) { Form::SetTag(tag); }

  /// Shows the message and returns 1 for yes or OK, 0 for everything else.
  int Show();

  QPlainTextEdit* txtMessage;
  QPushButton* cmdYES;
  QPushButton* cmdNO;
  QPushButton* cmdOK;  ///< never shown, only its caption is used
  QTimer Timer1;

 protected:
  void hideEvent(QHideEvent* event) override;

 private:
  void HandleKeys();
  void MessageKeyDown(Key& key);
  void MessageKeyPress(Key& key);
  void MessageGotFocus();
  void ResizeType(int step);
  void GiveRoom();
  void Close(int result);

  int dialogResult_ = 0;
  bool voiceWaitMode_ = false;
};

}  // namespace talnik
