#include "platform/linux/QtTrayIcon.h"
#include "platform/linux/VirtualKeys.h"
#include "platform/linux/XcbKeyboardHook.h"

#include <X11/keysym.h>
#include <gtest/gtest.h>

namespace talnik::test {

TEST(VirtualKeys, LettersDigitsFunctionKeysAndOthers) {
  const std::pair<int, std::uint32_t> cases[] = {
      {'A', XK_a},       {'Z', XK_z},      {'0', XK_0},    {'9', XK_9},      {0x60, XK_KP_0}, {0x69, XK_KP_9},
      {0x70, XK_F1},     {0x7b, XK_F12},   {0x87, XK_F24}, {0x20, XK_space}, {0x24, XK_Home}, {0x2e, XK_Delete},
      {0x6b, XK_KP_Add}, {0xbc, XK_comma}, {0, 0},         {0x88, 0},        {0xffff, 0},     {-1, 0},
  };
  for (const auto& [key, symbol] : cases) EXPECT_EQ(KeySymbol(key), symbol) << key;
}

TEST(KeyboardHook, WhereThereIsNoXServerTheHotKeyCannotBeHad) {
  EnableDetectableAutoRepeat();
  const auto hook = MakeKeyboardHook();
  EXPECT_TRUE(hook->Watch(0));
  EXPECT_FALSE(hook->Watch('T' | 6 << 16));
}

TEST(QtTrayIcon, WithoutAHostTheCallsDoNothing) {
  QtTrayIcon icon;
  EXPECT_FALSE(icon.IsThere());
  icon.SetTip(u"Talník"_qs);
  icon.Add(QIcon(), u"Talník"_qs);
  icon.SetTip(u"Talník 0:05"_qs);
  EXPECT_FALSE(icon.IsThere());
  icon.Delete();
  icon.Delete();
  EXPECT_FALSE(icon.IsThere());
}

}  // namespace talnik::test
