#pragma once

#include "shell/ControlEvents.h"
#include "shell/Speech.h"

#include <QObject>
#include <QString>

#include <functional>
#include <memory>

class QComboBox;
class QLineEdit;
class QPlainTextEdit;
class QWidget;

namespace talnik {

/// What the wrapper reads of an edit control, whichever widget it is.
class EditControl {
 public:
  virtual ~EditControl() = default;
  virtual QString Text() const = 0;
  virtual int SelStart() const = 0;
  virtual int SelLength() const = 0;
  virtual QString SelText() const = 0;
  virtual void Select(int start, int length) = 0;
  virtual bool MultiLine() const = 0;
  virtual bool Locked() const = 0;
  /// True when nothing of the text may be said.
  virtual bool Hidden() const = 0;
  /// The line under the cursor and the cursor's column in it.
  virtual QString CurrentLine(int* column) const = 0;
  virtual QWidget* Widget() const = 0;
};

/// A field that hides what is typed shows stars here too, so that nothing of it is ever spoken.
std::unique_ptr<EditControl> MakeEditControl(QLineEdit* edit);
std::unique_ptr<EditControl> MakeEditControl(QPlainTextEdit* edit);

/// The text that a move added to the selection or took from it.
QString SelectionDelta(const QString& text, int oldStart, int oldLength, int newStart, int newLength);

/// The word from the cursor on, with the separators behind it.
QString WordFrom(const QString& text, int cursor);

/// Watches the keys of one edit control and says what the cursor has crossed.
class cStandardEditBox {
 public:
  using Output = std::function<void(int kind, int code, const QString& text)>;

  cStandardEditBox(std::unique_ptr<EditControl> control, Speech& speech, Output produceOutput);

  void KeyDown(Key& key);
  void KeyUp(Key& key);
  QString GetCurrentLine() const;
  /// Sent with the next line to the Braille line, once.
  void AddRoleBraille(int role) { brailleRole_ = role; }
  EditControl& Control() const { return *control_; }

 private:
  bool IsSingleLine() const { return !control_->MultiLine(); }
  void SpeakDeletion(bool forward);
  void SendLineToBraille();
  void SpeakMove(const Key& key, const QString& text);

  std::unique_ptr<EditControl> control_;
  Speech& speech_;
  Output produceOutput_;
  int oldStart_ = 0;
  int oldLength_ = 0;
  int brailleRole_ = 0;
};

/// The accessible text box: an edit field that speaks. Flags 0 selects the whole text on focus; bit 1 lets Ctrl with
/// numeric plus and minus change the size of the type.
class cStandardTextBox : public QObject {
  Q_OBJECT

 public:
  cStandardTextBox(QLineEdit* edit, int flags, ControlEvents& events, Speech& speech);
  cStandardTextBox(QPlainTextEdit* edit, int flags, ControlEvents& events, Speech& speech);

  int Flags = 0;
  void AddRoleBraille(int role) { my_EditBox_->AddRoleBraille(role); }
  void my_EditBox_ProduceOutput(int kind, int code, const QString& text) { speech_.VoiceCommand(kind, code, text); }

 private:
  void Initialize(std::unique_ptr<EditControl> control, ControlEvents& events);
  void ResizeType(const Key& key);

  Speech& speech_;
  std::unique_ptr<cStandardEditBox> my_EditBox_;
};

/// Wraps a text box for as long as the form lives: the wrapper is a child of the control.
cStandardTextBox* MakeTextBox(QLineEdit* edit, int flags, ControlEvents& events, Speech& speech);
cStandardTextBox* MakeTextBox(QPlainTextEdit* edit, int flags, ControlEvents& events, Speech& speech);

/// The accessible combo box. A pure list speaks through its form's own handlers; one that can be typed in is watched
/// like a text box, but for the keys that move its list.
class cStandardComboBox : public QObject {
  Q_OBJECT

 public:
  cStandardComboBox(QComboBox* combo, ControlEvents& events, Speech& speech);

  int Flags = 0;
  void my_EditBox_ProduceOutput(int kind, int code, const QString& text) { speech_.VoiceCommand(kind, code, text); }

 private:
  Speech& speech_;
  std::unique_ptr<cStandardEditBox> my_EditBox_;
};

cStandardComboBox* MakeComboBox(QComboBox* combo, ControlEvents& events, Speech& speech);

}  // namespace talnik
