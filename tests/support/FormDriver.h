#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <QWidget>

#include <deque>
#include <functional>

namespace talnik::test {

/// Plays a user at the keyboard: real key events to whatever has the focus, and answers to dialogs as they open.
class FormDriver : public QObject {
 public:
  FormDriver();

  /// One key, pressed and released, to the focused control of the active window (or of `window`).
  void Press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, QWidget* window = nullptr);
  void PressOnly(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, bool repeat = false);
  void Release(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, bool repeat = false);
  /// Characters as typed, Czech ones too.
  void Type(const QString& text);

  /// What to do with the next modal window that opens, in the order of the calls. A window that nobody expected is
  /// closed and fails the test with its title and text.
  void Expect(std::function<void(QWidget* dialog)> answer);
  /// Expects a window with this object name and presses one key in it.
  void ExpectAndPress(const QString& objectName, int key);
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
  static void Missing(const char* name);
  static QWidget* Target(QWidget* window);
  void LookForDialog();

  std::deque<std::function<void(QWidget*)>> expected_;
  QList<QPointer<QWidget>> met_;
  QTimer poll_;
  int waited_ = 0;
};

}  // namespace talnik::test
