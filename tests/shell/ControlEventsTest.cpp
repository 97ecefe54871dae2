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

std::string Joined(const QStringList& lines) {
  return lines.join(u' ').toStdString();
}

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
    Listen(&first, u"1"_qs);
    Listen(&second, u"2"_qs);
    QObject::connect(&first, &QLineEdit::textEdited, this, [this] { log << u"work"_qs; });
  }

  void Appear() {
    show();
    activateWindow();
    ASSERT_TRUE(FormDriver::Until([this] { return isActiveWindow() && first.hasFocus(); }));
    log.clear();
  }

  void Listen(QWidget* control, const QString& name) {
    events.KeyDown(control, [this, name](Key& key) { Note("down" + name.toLatin1(), key); });
    events.KeyPress(control, [this, name](Key& key) { Note("press" + name.toLatin1(), key); });
    events.KeyUp(control, [this, name](Key& key) { Note("up" + name.toLatin1(), key); });
    events.GotFocus(control,
                    [this, name] { log << u"got"_qs + name + (events.ComingBack() ? u"-back"_qs : QString()); });
    events.LostFocus(control, [this, name] { log << u"lost"_qs + name; });
  }

  void Note(const QByteArray& what, Key& key) {
    log << QString::fromLatin1(what);
    if (what == swallowAt) key.Swallow();
    // The last thing done, on a copy: it may delete this window.
    if (const auto last = handler) last(what, key);
  }

  std::string Log() { return Joined(std::exchange(log, {})); }

  QStringList log;
  QByteArray swallowAt;
  std::function<void(const QByteArray&, Key&)> handler;
  ControlEvents events;
  QMenuBar bar;
  QLineEdit first, second;
};

/// A key as the window system sends it.
struct RawKey {
  QEvent::Type type;
  int key;
  quint64 time;
  bool repeat = false;
  Qt::KeyboardModifiers modifiers = Qt::NoModifier;
  quint32 scanCode = 0;

  void SendTo(QWidget* target) const {
    QKeyEvent event(type, key, modifiers, scanCode, 0, 0, QString(), repeat);
    event.setTimestamp(time);
    QApplication::sendEvent(target, &event);
  }
};

constexpr auto Down = QEvent::KeyPress;
constexpr auto Up = QEvent::KeyRelease;

TEST(ControlEvents, AKeyRunsFormThenControlThenItsOwnWorkAndComesUpOnce) {
  EventWindow window;
  window.Appear();
  FormDriver driver;
  driver.PressOnly(Qt::Key_F5);
  EXPECT_EQ(window.Log(), "form-down down1");
  driver.Release(Qt::Key_F5);
  EXPECT_EQ(window.Log(), "form-up up1");
  driver.Type(u"ě"_qs);
  EXPECT_EQ(window.Log(), "form-down down1 press1 work form-up up1");
  EXPECT_EQ(window.first.text().toStdString(), "ě");
}

TEST(ControlEvents, ASwallowedKeyGoesNoFartherButComesUp) {
  struct Case {
    const char* at;
    const char* expected;
  };
  for (const Case& test :
       {Case{"form-down", "form-down form-up up1"}, Case{"down1", "form-down down1 form-up up1"},
        Case{"press1", "form-down down1 press1 form-up up1"}, Case{"form-up", "form-down down1 press1 work form-up"}}) {
    EventWindow window;
    window.Appear();
    window.swallowAt = test.at;
    FormDriver().Type(u"a"_qs);
    EXPECT_EQ(window.Log(), test.expected) << test.at;
  }
}

TEST(ControlEvents, AHeldKeyRepeatsItsKeyDownAndComesUpOnce) {
  struct Case {
    const char* name;
    std::vector<RawKey> keys;
    const char* expected;
  };
  constexpr int key = Qt::Key_Right;
  const std::vector<Case> cases = {
      {"marked pairs",
       {{Down, key, 100},
        {Up, key, 600, true},
        {Down, key, 600, true},
        {Up, key, 630, true},
        {Down, key, 630, true},
        {Up, key, 640}},
       "form-down down1 form-down down1 form-down down1 form-up up1"},
      {"pairs without a mark",
       {{Down, key, 100}, {Up, key, 600}, {Down, key, 600}, {Up, key, 630}, {Down, key, 630}, {Up, key, 640}},
       "form-down down1 form-up up1 form-down down1 form-down down1"},
      {"presses alone",
       {{Down, key, 100}, {Down, key, 600}, {Down, key, 630}, {Up, key, 640}},
       "form-down down1 form-down down1 form-down down1 form-up up1"},
      {"two strokes",
       {{Down, key, 100}, {Up, key, 150}, {Down, key, 200}, {Up, key, 250}},
       "form-down down1 form-up up1 form-down down1 form-up up1"},
      {"a release that got lost",
       {{Down, key, 100}, {Down, key, 5000}, {Up, key, 5050}},
       "form-down down1 form-down down1 form-up up1"},
  };
  for (const Case& test : cases) {
    EventWindow window;
    window.Appear();
    for (const RawKey& raw : test.keys) raw.SendTo(&window.first);
    EXPECT_EQ(window.Log(), test.expected) << test.name;
  }
}

TEST(ControlEvents, AHandlerThatWaitsRunsOnce) {
  EventWindow window;
  window.Appear();
  FormDriver user;
  // The field does not want the key and offers it to the window.
  window.handler = [](const QByteArray& what, Key&) {
    if (what == "down1") FormDriver::Settle();
  };
  user.Press(Qt::Key_F7);
  EXPECT_EQ(window.Log(), "form-down down1 form-up up1");
}

TEST(ControlEvents, KeyUpCarriesTheKeyAndModifiersOfThePress) {
  EventWindow window;
  window.Appear();
  QStringList seen;
  window.handler = [&](const QByteArray& what, const Key& key) {
    if (what == "up1") seen << QString::number(key.code) + u'/' + QString::number(key.shift.toInt());
  };
  RawKey{Down, Qt::Key_T, 100, false, Qt::ShiftModifier, 28}.SendTo(&window.first);
  RawKey{Up, Qt::Key_Eacute, 150, false, Qt::NoModifier, 28}.SendTo(&window.first);
  EXPECT_EQ(Joined(seen), QStringLiteral("%1/%2").arg(Qt::Key_T).arg(Qt::ShiftModifier).toStdString());
}

TEST(ControlEvents, BothEntersAndBacktabAreOneKeyEach) {
  EventWindow window;
  window.Appear();
  QList<Key> seen;
  window.handler = [&](const QByteArray& what, const Key& key) {
    if (what == "form-down" && !key.Is(Qt::Key_Shift)) seen << key;
  };
  FormDriver driver;
  driver.Press(Qt::Key_Enter, Qt::KeypadModifier);
  driver.Press(Qt::Key_Backtab, Qt::ShiftModifier);
  ASSERT_EQ(seen.size(), 2);
  EXPECT_TRUE(seen[0].Is(Qt::Key_Return, Qt::NoModifier) && seen[0].keypad);
  EXPECT_TRUE(seen[1].Is(Qt::Key_Tab, Qt::ShiftModifier));
}

TEST(ControlEvents, AKeyThatClosedAWindowDoesNothingInTheOneBelow) {
  EventWindow below;
  below.Appear();
  for (const bool heldOn : {false, true}) {
    EventWindow dialog(&below);
    dialog.Appear();
    dialog.handler = [&](const QByteArray& what, Key&) {
      if (what == "down1") dialog.close();
    };
    RawKey{Down, Qt::Key_Return, 1000}.SendTo(&dialog.first);
    ASSERT_TRUE(FormDriver::Until([&] { return below.first.hasFocus(); }));
    below.log.clear();
    if (heldOn) {
      RawKey{Down, Qt::Key_Return, 1500}.SendTo(&below.first);
      RawKey{Down, Qt::Key_Return, 1530, true}.SendTo(&below.first);
    }
    RawKey{Up, Qt::Key_Return, 1560}.SendTo(&below.first);
    EXPECT_EQ(below.Log(), "");
    RawKey{Down, Qt::Key_Return, 4000}.SendTo(&below.first);
    RawKey{Up, Qt::Key_Return, 4050}.SendTo(&below.first);
    EXPECT_EQ(below.Log(), "form-down down1 press1 form-up up1");
  }
}

TEST(ControlEvents, AHeldKeyDoesNothingInTheWindowThatItOpened) {
  EventWindow below;
  below.Appear();
  RawKey{Down, Qt::Key_Return, 1000}.SendTo(&below.first);
  EventWindow opened(&below);
  opened.Appear();
  RawKey{Down, Qt::Key_Return, 1500}.SendTo(&opened.first);
  RawKey{Up, Qt::Key_Return, 1510}.SendTo(&opened.first);
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
  combo.showPopup();
  window.log.clear();
  driver.Press(Qt::Key_Down);
  driver.Press(Qt::Key_Return);
  EXPECT_EQ(window.Log(), "");
  EXPECT_EQ(combo.currentText().toStdString(), "b");
  window.bar.setActiveAction(window.bar.actions().first());
  driver.Press(Qt::Key_Down);
  driver.Press(Qt::Key_Return);
  EXPECT_EQ(window.Log(), "");
}

TEST(ControlEvents, FocusMovesAreToldOnceInOrder) {
  EventWindow window;
  window.Appear();
  window.second.setFocus();
  EXPECT_EQ(window.Log(), "lost1 got2");
  {
    EventWindow other;
    other.Appear();
  }
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
  FormDriver driver;
  driver.Press(Qt::Key_Return, Qt::NoModifier, &window);
  driver.Press(Qt::Key_Return, Qt::ControlModifier, &window);
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
  list.SetListIndex(1);
  list.SetListIndex(1);
  EXPECT_EQ(clicks, 1);
  QTest::keyClick(&list, Qt::Key_Down);
  EXPECT_EQ(clicks, 2);
  EXPECT_EQ(list.Text().toStdString(), "c");
  QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.item(2)).center());
  EXPECT_EQ(clicks, 3);
  QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.item(0)).center());
  EXPECT_EQ(clicks, 4);
  list.clear();
  EXPECT_EQ(clicks, 4);
  EXPECT_EQ(list.Line(7).toStdString(), "");
}

}  // namespace
}  // namespace talnik::test
