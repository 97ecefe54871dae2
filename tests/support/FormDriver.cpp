#include "support/FormDriver.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QKeyEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTest>

#include <gtest/gtest.h>

namespace talnik::test {

FormDriver::FormDriver() {
  poll_.setInterval(0);
  QObject::connect(&poll_, &QTimer::timeout, this, [this] {
    // A timer does not run within its own handler, unless it begins anew: an answer may open a dialog itself.
    poll_.start();
    LookForDialog();
  });
  poll_.start();
}

QWidget* FormDriver::Target(QWidget* window) {
  if (!window) window = QApplication::activeModalWidget();
  if (!window) window = QApplication::activeWindow();
  if (QWidget* popup = QApplication::activePopupWidget()) return popup->focusWidget() ? popup->focusWidget() : popup;
  if (!window) return QApplication::focusWidget();
  return window->focusWidget() ? window->focusWidget() : window;
}

void FormDriver::Press(int key, Qt::KeyboardModifiers modifiers, QWidget* window) {
  QWidget* target = Target(window);
  if (!target) {
    ADD_FAILURE() << "no window takes the key";
    return;
  }
  const QPointer<QWidget> alive(target);
  QTest::sendKeyEvent(QTest::Press, target, static_cast<Qt::Key>(key),
                      QTest::keyToAscii(static_cast<Qt::Key>(key))
                          ? QString(QChar::fromLatin1(QTest::keyToAscii(static_cast<Qt::Key>(key))))
                          : QString(),
                      modifiers);
  if (alive) QTest::sendKeyEvent(QTest::Release, target, static_cast<Qt::Key>(key), QString(), modifiers);
}

void FormDriver::PressOnly(int key, Qt::KeyboardModifiers modifiers, bool repeat) {
  QKeyEvent event(QEvent::KeyPress, key, modifiers, QString(), repeat);
  if (QWidget* target = Target(nullptr)) QApplication::sendEvent(target, &event);
}

void FormDriver::Release(int key, Qt::KeyboardModifiers modifiers, bool repeat) {
  QKeyEvent event(QEvent::KeyRelease, key, modifiers, QString(), repeat);
  if (QWidget* target = Target(nullptr)) QApplication::sendEvent(target, &event);
}

void FormDriver::Type(const QString& text) {
  for (const QChar character : text) {
    if (QWidget* target = Target(nullptr)) {
      QTest::sendKeyEvent(QTest::Click, target, Qt::Key_unknown, QString(character), Qt::NoModifier);
    }
  }
}

void FormDriver::Expect(std::function<void(QWidget*)> answer) {
  expected_.push_back(std::move(answer));
}

void FormDriver::ExpectAndPress(const QString& objectName, int key) {
  Expect([this, objectName, key](QWidget* dialog) {
    EXPECT_EQ(dialog->objectName().toStdString(), objectName.toStdString());
    Press(key, Qt::NoModifier, dialog);
  });
}

void FormDriver::LookForDialog() {
  QWidget* dialog = QApplication::activeModalWidget();
  met_.removeIf([](const QPointer<QWidget>& met) { return met.isNull() || !met->isVisible(); });
  if (!dialog || !dialog->isVisible() || met_.contains(dialog)) return;
  // A window speaks when it comes to the front, which takes a few turns of the event loop.
  constexpr int patience = 200;
  if (QApplication::activeWindow() != dialog && ++waited_ < patience) return dialog->activateWindow();
  waited_ = 0;
  met_ << dialog;
  if (expected_.empty()) {
    QString words;
    for (auto* text : dialog->findChildren<QPlainTextEdit*>()) words += text->toPlainText() + u' ';
    ADD_FAILURE() << "unexpected window " << dialog->objectName().toStdString() << " \""
                  << dialog->windowTitle().toStdString() << "\": " << words.toStdString();
    dialog->close();
    return;
  }
  const auto answer = expected_.front();
  expected_.pop_front();
  answer(dialog);
}

bool FormDriver::Until(const std::function<bool()>& condition) {
  const QDeadlineTimer deadline(5000);
  while (!condition()) {
    if (deadline.hasExpired()) return false;
    QApplication::processEvents(QEventLoop::AllEvents, 10);
  }
  return true;
}

void FormDriver::Settle() {
  for (int i = 0; i < 5; ++i) QApplication::processEvents();
}

void FormDriver::Missing(const char* name) {
  ADD_FAILURE() << "no control " << name;
}

}  // namespace talnik::test
