#include "shell/ControlEvents.h"
#include "shell/TextControls.h"
#include "support/FormDriver.h"

#include <QComboBox>
#include <QDialog>
#include <QKeyEvent>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace talnik::test {
namespace {

/// A window with two fields that writes down every event.
class EventWindow : public QDialog {
 public:
  explicit EventWindow(QWidget* parent = nullptr) : QDialog(parent), events(this) {
    auto* all = new QVBoxLayout(this);
    all->setMenuBar(&bar);
    all->addWidget(&first);
    all->addWidget(&second);
    events.FormKeyDown([this](Key& key) { Note("form-down", key); });
    events.FormKeyUp([this](Key& key) { Note("form-up", key); });
    Listen(&first, "1");
    Listen(&second, "2");
    QObject::connect(&first, &QLineEdit::textEdited, this, [this] { log << u"work"_qs; });
  }

  void Appear() {
    show();
    activateWindow();
    ASSERT_TRUE(FormDriver::Until([this] { return isActiveWindow() && first.hasFocus(); }));
    log.clear();
  }

  void Listen(QWidget* control, const QByteArray& name) {
    events.KeyDown(control, [this, name](Key& key) { Note("down" + name, key); });
    events.KeyPress(control, [this, name](Key& key) { Note("press" + name, key); });
    events.KeyUp(control, [this, name](Key& key) { Note("up" + name, key); });
    events.GotFocus(control,
                    [this, name] { log << QString::fromLatin1("got" + name + (events.ComingBack() ? "-back" : "")); });
    events.LostFocus(control, [this, name] { log << QString::fromLatin1("lost" + name); });
  }

  void Note(const QByteArray& what, Key& key) {
    log << QString::fromLatin1(what);
    // The last thing done, on a copy: it may delete this window.
    if (const auto last = handler) last(what, key);
  }

  std::string Log() { return std::exchange(log, {}).join(u' ').toStdString(); }

  QStringList log;
  std::function<void(const QByteArray&, Key&)> handler;
  ControlEvents events;
  QMenuBar bar;
  QLineEdit first, second;
};

void SendRaw(QWidget* target, QEvent::Type type, int key, quint64 time, bool repeat = false,
             Qt::KeyboardModifiers modifiers = Qt::NoModifier, quint32 scanCode = 0) {
  QKeyEvent event(type, key, modifiers, scanCode, 0, 0, QString(), repeat);
  event.setTimestamp(time);
  QApplication::sendEvent(target, &event);
}

/// Presses and releases of one key as the window system sends them: "d100 u600r" is down at 100 ms, then up at 600 ms
/// with the mark of a repetition.
void Send(QWidget* target, const char* script, int key = Qt::Key_Right) {
  for (const QByteArray& event : QByteArray(script).split(' ')) {
    const bool repeat = event.endsWith('r');
    SendRaw(target, event[0] == 'd' ? QEvent::KeyPress : QEvent::KeyRelease, key,
            event.mid(1).chopped(repeat ? 1 : 0).toULongLong(), repeat);
  }
}

TEST(ControlEvents, AKeyRunsFormThenControlThenItsOwnWorkUntilItIsSwallowedAndComesUp) {
  const std::pair<QByteArray, const char*> cases[] = {{"", "form-down down1 press1 work form-up up1"},
                                                      {"form-down", "form-down form-up up1"},
                                                      {"down1", "form-down down1 form-up up1"},
                                                      {"press1", "form-down down1 press1 form-up up1"},
                                                      {"form-up", "form-down down1 press1 work form-up"}};
  for (const auto& [at, expected] : cases) {
    EventWindow window;
    window.Appear();
    window.handler = [at = at](const QByteArray& what, Key& key) {
      if (what == at) key.Swallow();
    };
    FormDriver().Type(u"ě"_qs);
    EXPECT_EQ(window.Log(), expected) << at.toStdString();
    EXPECT_EQ(window.first.text(), at.isEmpty() || at == "form-up" ? u"ě"_qs : QString());
  }
}

TEST(ControlEvents, AHeldKeyRepeatsItsKeyDownAndComesUpOnce) {
  const struct {
    const char* name;
    const char* keys;
    const char* expected;
  } cases[] = {
      {"marked pairs", "d100 u600r d600r u630r d630r u640",
       "form-down down1 form-down down1 form-down down1 form-up up1"},
      {"pairs without a mark", "d100 u600 d600 u630 d630 u640",
       "form-down down1 form-up up1 form-down down1 form-down down1"},
      {"presses alone", "d100 d600 d630 u640", "form-down down1 form-down down1 form-down down1 form-up up1"},
      {"two strokes", "d100 u150 d200 u250", "form-down down1 form-up up1 form-down down1 form-up up1"},
      {"a release that got lost", "d100 d5000 u5050", "form-down down1 form-down down1 form-up up1"},
  };
  for (const auto& test : cases) {
    EventWindow window;
    window.Appear();
    Send(&window.first, test.keys);
    EXPECT_EQ(window.Log(), test.expected) << test.name;
  }
}

TEST(ControlEvents, AHandlerThatWaitsRunsOnce) {
  EventWindow window;
  window.Appear();
  // The field does not want the key and offers it to the window.
  window.handler = [](const QByteArray& what, Key&) {
    if (what == "down1") FormDriver::Settle();
  };
  FormDriver().Press(Qt::Key_F7);
  EXPECT_EQ(window.Log(), "form-down down1 form-up up1");
}

TEST(ControlEvents, KeysAreToldByTheirMeaningAtThePress) {
  EventWindow window;
  window.Appear();
  QList<Key> seen;
  window.handler = [&](const QByteArray& what, const Key& key) {
    if (what.endsWith("up") || what == "up1") seen << key;
  };
  SendRaw(&window.first, QEvent::KeyPress, Qt::Key_T, 100, false, Qt::ShiftModifier, 28);
  SendRaw(&window.first, QEvent::KeyRelease, Qt::Key_Eacute, 150, false, Qt::NoModifier, 28);
  FormDriver driver;
  driver.Press(Qt::Key_Enter, Qt::KeypadModifier);
  driver.Press(Qt::Key_Backtab, Qt::ShiftModifier);
  ASSERT_GE(seen.size(), 5);
  EXPECT_TRUE(seen[1].Is(Qt::Key_T, Qt::ShiftModifier)) << "whatever the release has become";
  EXPECT_TRUE(seen[3].Is(Qt::Key_Return, Qt::NoModifier) && seen[3].keypad);
  EXPECT_TRUE(seen[4].Is(Qt::Key_Tab, Qt::ShiftModifier));
}

TEST(ControlEvents, AKeyThatClosedOrOpenedAWindowDoesNothingInTheOther) {
  EventWindow below;
  below.Appear();
  for (const char* rest : {"u1560", "d1500 d1530r u1560"}) {
    EventWindow dialog(&below);
    dialog.Appear();
    dialog.handler = [&](const QByteArray& what, Key&) {
      if (what == "down1") dialog.close();
    };
    Send(&dialog.first, "d1000", Qt::Key_Return);
    ASSERT_TRUE(FormDriver::Until([&] { return below.first.hasFocus(); }));
    below.log.clear();
    Send(&below.first, rest, Qt::Key_Return);
    EXPECT_EQ(below.Log(), "") << rest;
    Send(&below.first, "d4000 u4050", Qt::Key_Return);
    EXPECT_EQ(below.Log(), "form-down down1 press1 form-up up1");
  }
  Send(&below.first, "d6000", Qt::Key_Return);
  EventWindow opened(&below);
  opened.Appear();
  Send(&opened.first, "d6500 u6510", Qt::Key_Return);
  EXPECT_EQ(opened.Log(), "");
}

TEST(ControlEvents, HandlersMayDeleteTheControlAndTheWindow) {
  for (const QByteArray at : {"form-down", "down1", "press1", "form-up", "up1"}) {
    auto* window = new EventWindow;
    window->Appear();
    window->handler = [window, at](const QByteArray& what, Key&) {
      if (what == at) delete window;
    };
    FormDriver().Type(u"a"_qs);
  }
  EventWindow window;
  window.Appear();
  auto* field = new QLineEdit(&window);
  field->show();
  field->setFocus();
  window.events.KeyDown(field, [field](Key&) { delete field; });
  window.events.KeyPress(field, [](Key&) { ADD_FAILURE() << "the control is gone"; });
  FormDriver().Press(Qt::Key_A, Qt::NoModifier, &window);
}

TEST(ControlEvents, KeysInPopupsAndTheMenuBarAreNotTheWindows) {
  EventWindow window;
  QComboBox combo(&window);
  combo.addItems({u"a"_qs, u"b"_qs});
  window.layout()->addWidget(&combo);
  window.bar.addMenu(u"Menu"_qs)->addAction(u"Item"_qs);
  window.Appear();
  FormDriver driver;
  combo.setFocus();
  window.log.clear();
  for (const bool inBar : {false, true}) {
    if (inBar) {
      window.bar.setActiveAction(window.bar.actions().first());
    } else {
      combo.showPopup();
    }
    driver.Press(Qt::Key_Down);
    driver.Press(Qt::Key_Return);
    EXPECT_EQ(window.Log(), "");
  }
  EXPECT_EQ(combo.currentText().toStdString(), "b");
}

TEST(ControlEvents, FocusMovesAreToldOnceInOrder) {
  EventWindow window;
  window.Appear();
  window.second.setFocus();
  EXPECT_EQ(window.Log(), "lost1 got2");
  EventWindow().Appear();
  window.activateWindow();
  ASSERT_TRUE(FormDriver::Until([&] { return window.second.hasFocus() && window.isActiveWindow(); }));
  EXPECT_EQ(window.Log(), "got2-back");
}

TEST(ControlEvents, AMenuThatEscapeClosedGivesTheControlBackAudibly) {
  EventWindow window;
  int chosen = 0;
  QMenu menu;
  menu.addAction(u"Item"_qs, [&] { ++chosen; });
  window.Appear();
  FormDriver driver;
  for (const int key : {Qt::Key_Escape, Qt::Key_Return}) {
    menu.popup(QPoint(0, 0));
    driver.Press(Qt::Key_Down);
    driver.Press(key);
    ASSERT_TRUE(FormDriver::Until([&] { return !menu.isVisible(); }));
    FormDriver::Settle();
    EXPECT_EQ(window.Log(), key == Qt::Key_Escape ? "got1-back" : "");
  }
  EXPECT_EQ(chosen, 1);
}

TEST(ControlEvents, EnterPressesAButtonOutsideDialogsToo) {
  QMainWindow window;
  ControlEvents events(&window);
  QPushButton button(&window);
  int clicks = 0;
  QObject::connect(&button, &QPushButton::clicked, [&] { ++clicks; });
  window.show();
  button.setFocus();
  for (const auto modifiers : {Qt::NoModifier, Qt::ControlModifier})
    FormDriver().Press(Qt::Key_Return, modifiers, &window);
  EXPECT_EQ(clicks, 1);
}

TEST(ListBox, ClickRunsWhenTheSelectionChangesAndAtAMouseClick) {
  ListBox list;
  int clicks = 0;
  QObject::connect(&list, &ListBox::Click, [&] { ++clicks; });
  list.addItems({u"a"_qs, u"b"_qs, u"c"_qs});
  list.show();
  list.setFocus();
  FormDriver::Settle();
  EXPECT_EQ(clicks, 0);
  EXPECT_EQ(list.ListIndex(), -1);
  for (int twice = 0; twice < 2; ++twice) list.SetListIndex(1);
  EXPECT_EQ(clicks, 1);
  QTest::keyClick(&list, Qt::Key_Down);
  EXPECT_EQ(clicks, 2);
  EXPECT_EQ(list.Text().toStdString(), "c");
  for (const int line : {2, 0}) {
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.item(line)).center());
  }
  EXPECT_EQ(clicks, 4) << "on the selected line, then on another";
  list.clear();
  EXPECT_EQ(clicks, 4);
  EXPECT_EQ(list.Line(7).toStdString(), "");
}

}  // namespace
}  // namespace talnik::test
