#pragma once

#include <QHash>
#include <QList>
#include <QObject>
#include <QSet>
#include <QString>

#include <functional>
#include <memory>

class QWidget;
class QKeyEvent;

namespace talnik {

/// One key as the handlers see it.
struct Key {
  int code = 0;                 ///< Qt::Key
  Qt::KeyboardModifiers shift;  ///< Shift, Ctrl and Alt as they stood at the press
  bool keypad = false;          ///< on the numeric block
  QString text;                 ///< what the key types; empty for keys that type nothing
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
///   form's KeyDown, control's KeyDown, control's KeyPress (typed characters only), the control's own work,
/// and at the release form's KeyUp, control's KeyUp, once a press, however long the key was held, and only in the
/// window that saw the press. A key that a handler swallows goes no farther down that line, and its own work is not
/// done. GotFocus and LostFocus run after the focus has moved, in that order of handlers in which they were added.
class ControlEvents : public QObject {
  Q_OBJECT

 public:
  explicit ControlEvents(QWidget* form);
  ~ControlEvents() override;

  void FormKeyDown(KeyHandler handler);
  void FormKeyUp(KeyHandler handler);

  void KeyDown(QWidget* control, KeyHandler handler);
  void KeyPress(QWidget* control, KeyHandler handler);
  void KeyUp(QWidget* control, KeyHandler handler);
  void GotFocus(QWidget* control, Handler handler);
  void LostFocus(QWidget* control, Handler handler);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace talnik
