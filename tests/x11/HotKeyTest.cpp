#include "platform/HotKey.h"
#include "platform/linux/LinuxShell.h"
#include "platform/linux/XcbKeyboardHook.h"
#include "support/FormDriver.h"

#include <QApplication>
#include <QMenu>
#include <QProcess>
#include <QWidget>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <csignal>
#include <cstdlib>
#include <memory>
#include <string>

namespace talnik::test {

namespace {

constexpr int CtrlAltT = 6 << 16 | 'T';
const QString Whole = u"keydown ctrl keydown alt keydown t keyup t keyup alt keyup ctrl"_qs;

void RunTool(const QString& program, const QString& words) {
  QProcess::execute(program, words.split(u' '));
}

class HotKey : public ::testing::Test {
 protected:
  void SetUp() override {
    hook_->Released = [this] { ++heard_; };
    ASSERT_TRUE(hook_->Watch(CtrlAltT));
  }

  /// How often the hook has fired for the keys. The whole combination behind them marks their end.
  int Heard(const QString& keys) {
    heard_ = 0;
    RunTool(u"xdotool"_qs, keys + u' ' + Whole);
    EXPECT_TRUE(FormDriver::Until([this] { return heard_ > 0; }));
    FormDriver::Settle();
    return heard_ - 1;
  }

  std::unique_ptr<KeyboardHook> hook_ = MakeKeyboardHook();
  int heard_ = 0;
};

}  // namespace

TEST_F(HotKey, FiresOnTheReleaseOfTheExactCombinationAlone) {
  const std::pair<QString, int> cases[] = {
      {Whole, 1},
      {Whole + u' ' + Whole, 2},
      {u"keydown ctrl keydown t keyup t keyup ctrl"_qs, 0},
      {u"keydown shift keydown ctrl keydown alt keydown t keyup t keyup alt keyup ctrl keyup shift"_qs, 0},
      {u"keydown ctrl keydown alt keydown t keyup alt keyup t keyup ctrl"_qs, 1},
      {u"keydown ctrl keydown alt keydown t keydown x keyup x keyup t keyup alt keyup ctrl"_qs, 0},
      {u"key Num_Lock "_qs + Whole, 1},
      {u"key Num_Lock key Caps_Lock "_qs + Whole + u" key Caps_Lock"_qs, 1},
  };
  for (const auto& [keys, times] : cases) EXPECT_EQ(Heard(keys), times) << keys.toStdString();
}

TEST_F(HotKey, IsHeardWhileAMenuOfOursHoldsTheKeyboard) {
  QMenu menu;
  menu.addAction(u"x"_qs);
  ASSERT_TRUE(hook_->Watch(HotKeyCtrlBit << 16 | 'T'));
  menu.popup({});
  ASSERT_TRUE(FormDriver::Until([&menu] { return menu.isVisible() && QApplication::activePopupWidget() == &menu; }));
  RunTool(u"xdotool"_qs, u"keydown ctrl keydown t keyup t keyup ctrl"_qs);
  EXPECT_TRUE(FormDriver::Until([this] { return heard_ > 0; }));
  FormDriver::Settle();
  EXPECT_EQ(heard_, 1);
}

TEST_F(HotKey, AKeyHasItsCodeWhateverTheLayoutMakesOfIt) {
  // Native numbers of the keys of the second row from above.
  const struct {
    QString layout;
    quint32 scanCode;
    int key;
  } cases[] = {{u"cz"_qs, 11, '2'}, {u"us"_qs, 11, '2'}, {u"cz"_qs, 29, 'Z'}, {u"us"_qs, 29, 'Y'}, {u"us"_qs, 0, 0}};
  for (const auto& test : cases) {
    RunTool(u"setxkbmap"_qs, test.layout);
    EXPECT_TRUE(FormDriver::Until([&] { return hook_->VirtualKey(test.scanCode) == test.key; }))
        << test.layout.toStdString() << test.scanCode << ' ' << hook_->VirtualKey(test.scanCode);
  }
}

TEST_F(HotKey, FollowsTheLayout) {
  for (const auto& layout : {u"dvorak"_qs, u"us"_qs}) {
    RunTool(u"setxkbmap"_qs, layout);
    heard_ = 0;
    // The news of the layout may come behind the first keys.
    EXPECT_TRUE(FormDriver::Until([this] {
      RunTool(u"xdotool"_qs, Whole);
      FormDriver::Settle();
      return heard_ > 0;
    })) << layout.toStdString();
  }
}

TEST_F(HotKey, WhatAnotherProgramHoldsCannotBeHadUntilItLetsGo) {
  xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
  {
    XcbKeyboardHook other(connection);
    EXPECT_FALSE(other.Watch(CtrlAltT));
    EXPECT_TRUE(other.Watch(CtrlAltT | 1 << 16));
    EXPECT_FALSE(other.Watch(0x88)) << "no keyboard has it";
    EXPECT_TRUE(hook_->Watch(0));
    EXPECT_TRUE(FormDriver::Until([&other] { return other.Watch(CtrlAltT); })) << "two connections, no order between";
    EXPECT_FALSE(hook_->Watch(CtrlAltT));
  }
  xcb_disconnect(connection);
  EXPECT_TRUE(FormDriver::Until([this] { return hook_->Watch(CtrlAltT); }));
  EXPECT_EQ(Heard(Whole), 1);
}

TEST(Windows, ComeToTheFrontAsIfTheUserHadChosenThem) {
  xcb_connection_t* manager = xcb_connect(nullptr, nullptr);
  const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(manager)).data->root;
  const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;
  std::free(xcb_request_check(manager, xcb_change_window_attributes_checked(manager, root, XCB_CW_EVENT_MASK, &mask)));
  QWidget window;
  LinuxShell().BringToFront(window.winId());
  EXPECT_TRUE(FormDriver::Until([&] {
    const std::unique_ptr<xcb_generic_event_t, decltype(&std::free)> event(xcb_poll_for_event(manager), &std::free);
    if (!event || (event->response_type & 0x7f) != XCB_CLIENT_MESSAGE) return false;
    const auto& wish = *reinterpret_cast<const xcb_client_message_event_t*>(event.get());
    return wish.window == window.winId() && wish.data.data32[0] == 2;
  }));
  xcb_disconnect(manager);
}

}  // namespace talnik::test

namespace {

/// Starts a display of our own and makes it the program's; 0 where that cannot be.
pid_t StartDisplay() {
  int tells[2];
  if (::pipe(tells) != 0) return 0;
  const pid_t display = ::fork();
  if (display == 0) {
    const std::string descriptor = std::to_string(tells[1]);
    // It must neither outlive a test that crashes nor keep its output open.
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    ::dup2(nowhere, STDOUT_FILENO);
    ::dup2(nowhere, STDERR_FILENO);
    ::execlp("Xvfb", "Xvfb", "-displayfd", descriptor.c_str(), "-nolisten", "tcp", nullptr);
    ::_exit(1);
  }
  ::close(tells[1]);
  QByteArray number;
  for (char digit = 0; digit != '\n' && ::read(tells[0], &digit, 1) == 1;) number += digit;
  ::close(tells[0]);
  if (!number.endsWith('\n')) return 0;
  qputenv("DISPLAY", ":" + number.trimmed());
  qputenv("QT_QPA_PLATFORM", "xcb");
  return display;
}

}  // namespace

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  const pid_t display = StartDisplay();
  if (display == 0) return 77;
  int result = 0;
  {
    QApplication application(argc, argv);
    result = RUN_ALL_TESTS();
  }
  ::kill(display, SIGTERM);
  ::waitpid(display, nullptr, 0);
  return result;
}
