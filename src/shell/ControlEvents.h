#pragma once

#include <QObject>
#include <QString>

#include <functional>
#include <memory>

class QWidget;

namespace talnik {

/// One key as the handlers see it. Both Enter keys are Key_Return (keypad tells them apart), and Shift+Tab is Key_Tab.
struct Key {
  int code = 0;                 ///< Qt::Key
  Qt::KeyboardModifiers shift;  ///< Shift, Ctrl and Alt as they stood at the press
  bool keypad = false;          ///< on the numeric block
  QString text;                 ///< what the key types; empty for keys that type nothing
  quint32 scanCode = 0;         ///< the native number of the key itself; 0 when unknown
  bool swallowed = false;

  void Swallow() { swallowed = true; }
  bool Plain() const { return shift == Qt::NoModifier; }
  bool Is(int key) const { return code == key; }
  bool Is(int key, Qt::KeyboardModifiers modifiers) const { return code == key && shift == modifiers; }
  bool NumericPlus() const { return keypad && code == Qt::Key_Plus; }
  bool NumericMinus() const { return keypad && code == Qt::Key_Minus; }
};

using KeyHandler = std::function<void(Key&)>;
using Handler = std::function<void()>;

/// The order of events that all windows of the program rely on. For a control with the focus, a key runs
///   form's KeyDown, control's KeyDown, control's KeyPress (typed characters, Enter, Escape, Backspace), own work,
/// and at the release form's KeyUp, control's KeyUp, once a press, however long the key was held, and only in the
/// window that saw the press. A key that a handler swallows goes no farther down that line, and its own work is not
/// done; its KeyUp comes all the same. A held key that closed a window or chose a menu item does nothing in the window
/// below until it is pressed anew.
///
/// GotFocus runs after the focus has moved to the control: within the window, when the user comes back to the window
/// from another one, and when Escape has closed a menu over it. LostFocus runs before it, for the control that had the
/// focus in this window; leaving for another window or a menu is no LostFocus. Handlers run in the order in which they
/// were added; they may close or delete the control and the window.
class ControlEvents : public QObject {
  Q_OBJECT

 public:
  explicit ControlEvents(QWidget* form);
  ~ControlEvents() override;

  /// Lets `isDown` tell whether the key of a native scan code is held. A release may pass while no window of the
  /// program has the focus; without this the next press of that key would count as its repetition.
  static void AskKeyboard(std::function<bool(quint32 scanCode)> isDown);

  void FormKeyDown(KeyHandler handler);
  void FormKeyUp(KeyHandler handler);

  void KeyDown(QWidget* control, KeyHandler handler);
  void KeyPress(QWidget* control, KeyHandler handler);
  void KeyUp(QWidget* control, KeyHandler handler);
  void GotFocus(QWidget* control, Handler handler);
  void LostFocus(QWidget* control, Handler handler);

  /// True while a GotFocus runs because the user came back to a control that he had not left for another one of this
  /// window.
  bool ComingBack() const;

  /// Runs the GotFocus of the control that has the focus as if the user had just come back to it.
  void ComeBack();

 private:
  struct Impl;
  friend class KeyOrder;
  std::shared_ptr<Impl> impl_;
};

}  // namespace talnik
