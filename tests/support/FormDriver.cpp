#include "support/FormDriver.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDeadlineTimer>
#include <QKeyEvent>
#include <QKeySequence>
#include <QLabel>
#include <QMetaProperty>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
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

void FormDriver::Act(const QString& act, QWidget* window) {
  if (act.startsWith(u'\'')) return Type(act.mid(1, act.size() - 2));
  if (act.startsWith(u'?')) return ExpectMessage(act.mid(1), Qt::Key_Return);
  if (act.startsWith(u'!')) return ExpectMessage(act.mid(1), Qt::Key_Escape);
  if (ActOnControl(act, window ? window : QApplication::activeWindow())) return;
  const QKeyCombination combination = QKeySequence::fromString(act)[0];
  Press(combination.key(), combination.keyboardModifiers(), window);
}

bool FormDriver::ActOnControl(const QString& act, QWidget* window) {
  static const QRegularExpression parts(u"^(?:(@:?)|)([\\w()]+)(?:([=:])(.*))?$"_qs,
                                        QRegularExpression::DotMatchesEverythingOption);
  const QRegularExpressionMatch match = parts.match(act);
  const QByteArray name = match.captured(2).toLatin1();
  const QString way = match.captured(1) + match.captured(3);
  const QString value = match.captured(4);
  if (name.startsWith("mnu") && way.isEmpty()) {
    if (auto* command = Find<QAction>(window, name)) command->trigger();
  } else if ((name.startsWith("cmd") || name.startsWith("Command") || name.startsWith("opt")) && way.isEmpty()) {
    if (auto* button = Find<QAbstractButton>(window, name)) button->click();
  } else if (way.isEmpty()) {
    return false;
  } else if (auto* control = Find<QWidget>(window, name)) {
    const char* content = control->metaObject()->userProperty().name();
    if (way == u'=') control->setProperty(content, value);
    if (way == u'@') control->setFocus();
    if (way == u':') {
      EXPECT_EQ(control->property(content).toString().toStdString(), value.toStdString());
    }
    if (way == u"@:") {
      EXPECT_TRUE(control->hasFocus());
    }
  }
  return true;
}

void FormDriver::Play(const QString& script, const std::function<std::string()>& heard, bool settles, QWidget* window) {
  for (const QString& step : script.split(u" | "_qs)) {
    const QString act = step.section(u" >"_qs, 0, 0);
    SCOPED_TRACE(act.toStdString() + " in " + script.toStdString());
    heard();
    Act(act, window);
    if (settles) Settle();
    if (act == step) continue;
    EXPECT_EQ(heard(), step.mid(act.size() + 3).toStdString());
  }
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

void FormDriver::ExpectMessage(const QString& text, int key) {
  Expect([this, text, key](QWidget* dialog) {
    CheckMessage(dialog, text);
    Press(key, Qt::NoModifier, dialog);
  });
}

void FormDriver::ExpectMessage(const QString& text, const char* button) {
  Expect([text, button](QWidget* dialog) {
    CheckMessage(dialog, text);
    Find<QPushButton>(dialog, button)->click();
  });
}

void FormDriver::CheckMessage(QWidget* dialog, QString text) {
  QString shown = Find<QPlainTextEdit>(dialog, "txtMessage")->toPlainText();
  if (text.endsWith(u'…')) {
    text.chop(1);
    shown.truncate(text.size());
  }
  EXPECT_EQ(shown.toStdString(), text.toStdString());
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
