#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <QWidget>

#include <deque>
#include <functional>
#include <string>

namespace talnik::test {

/// Plays a user at the keyboard: real key events to whatever has the focus, and answers to dialogs as they open.
class FormDriver : public QObject {
 public:
  FormDriver();

  /// One key, pressed and released, to the focused control of the active window (or of `window`).
  void Press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, QWidget* window = nullptr);
  /// One act, told by a text:
  ///   Ctrl+Right        a key by its name; 'ab' types
  ///   mnuExit  cmdOK    a command of the menu, a button
  ///   Text3=1.2.2024    the control of this name gets this value; a combo box that of a line
  ///   Text3:1.2.2024    it must hold this value
  ///   @Text3            it gets the focus; @:Text3 it must have it
  ///   ?Smazat?  !Smazat?  a message of this text is to come, and will be answered by Enter or by Escape
  void Act(const QString& act, QWidget* window = nullptr);
  /// Acts one after the other; what stands behind " > " must be heard of it: "Down > say: 01 | cmdStorno".
  void Play(const QString& script, const std::function<std::string()>& heard, bool settles, QWidget* window = nullptr);
  void PressOnly(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, bool repeat = false);
  void Release(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, bool repeat = false);
  /// Characters as typed, Czech ones too.
  void Type(const QString& text);

  /// What to do with the next modal window that opens, in the order of the calls. A window that nobody expected is
  /// closed and fails the test with its title and text.
  void Expect(std::function<void(QWidget* dialog)> answer);
  /// Expects a window with this object name and presses one key in it.
  void ExpectAndPress(const QString& objectName, int key);
  /// Expects a message of this text, or one that begins so if the text ends in "…", and answers it by a key.
  void ExpectMessage(const QString& text, int key = Qt::Key_Return);
  /// The same, answered by a button.
  void ExpectMessage(const QString& text, const char* button);
  /// True when every expected window has come.
  bool AllCame() const { return expected_.empty(); }

  /// Spins the event loop until the condition holds; false after five seconds.
  static bool Until(const std::function<bool()>& condition);
  /// Lets everything that is queued run.
  static void Settle();

  /// The control with this object name, of this class, in the window; fails the test when there is none.
  template <class Control>
  static Control* Find(QWidget* window, const char* name) {
    auto* control = window->findChild<Control*>(QString::fromLatin1(name));
    if (!control) Missing(name);
    return control;
  }

 private:
  bool ActOnControl(const QString& act, QWidget* window);
  static void CheckMessage(QWidget* dialog, QString text);
  static void Missing(const char* name);
  static QWidget* Target(QWidget* window);
  void LookForDialog();

  std::deque<std::function<void(QWidget*)>> expected_;
  QList<QPointer<QWidget>> met_;
  QTimer poll_;
  int waited_ = 0;
};

}  // namespace talnik::test
