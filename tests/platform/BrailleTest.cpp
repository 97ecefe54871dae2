#include "platform/Daemons.h"
#include "platform/linux/BrailleWindow.h"
#include "platform/linux/BrlapiBraille.h"
#include "platform/linux/BrlapiConnection.h"
#include "support/FormDriver.h"

#include <gtest/gtest.h>

namespace talnik::test {

TEST(BrailleWindow, ShowsThePartWithTheCursor) {
  const QString text = u"abcdefghij"_qs;
  const struct {
    QString text;
    int cursor;
    QString visible;
    int cell;
  } cases[] = {{text, -1, u"abcd"_qs, 0},
               {text, 0, u"abcd"_qs, 1},
               {text, 3, u"abcd"_qs, 4},
               {text, 4, u"efgh"_qs, 1},
               {text, 10, u"ij"_qs, 3},
               {text, 99, u"ij"_qs, 3},
               {u"abcd"_qs, 4, QString(), 1},
               {QString(), 0, QString(), 1},
               {u"\U0001f600\U0001f600\U0001f600\U0001f600e"_qs, 8, u"e"_qs, 1},
               {u"a\n"_qs + QChar(0) + QChar(0xd800), 2, u"a  \ufffd"_qs, 3}};
  for (const auto& one : cases) {
    BrailleWindow window;
    window.SetCells(4);
    window.SetText(one.text, one.cursor);
    EXPECT_EQ(window.Visible(), one.visible) << one.text.toStdString() << one.cursor;
    EXPECT_EQ(window.CursorCell(), one.cell) << one.text.toStdString() << one.cursor;
  }
}

TEST(BrailleWindow, MovesAlongTheTextAndStaysAtItsEnds) {
  BrailleWindow window;
  window.SetCells(4);
  window.SetText(u"abcdefghij"_qs, 1);
  QStringList seen;
  for (int i = 0; i < 3; ++i) seen << (window.MoveRight(), window.Visible());
  EXPECT_EQ(window.CursorCell(), 0);
  for (int i = 0; i < 3; ++i) seen << (window.MoveLeft(), window.Visible());
  EXPECT_EQ(seen, QStringList({u"efgh"_qs, u"ij"_qs, u"ij"_qs, u"efgh"_qs, u"abcd"_qs, u"abcd"_qs}));
}

namespace {

class BrailleTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    if (!Daemon::IsInstalled(u"brltty"_qs)) return;
    daemon = std::make_unique<BrailleDaemon>();
    ASSERT_TRUE(daemon->Start());
  }
  static void TearDownTestSuite() { daemon.reset(); }

  void SetUp() override {
    if (!daemon) GTEST_SKIP() << "brltty is not installed";
  }

  static ::testing::AssertionResult Shows(const QString& text) {
    if (FormDriver::Until([&] { return daemon->Shown() == text; })) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << daemon->Shown().toStdString();
  }
  /// A line of ours that shows "before".
  static std::unique_ptr<BrlapiBraille> Connected() {
    auto braille = std::make_unique<BrlapiBraille>();
    braille->SetActive(true);
    braille->Show(u"before"_qs, 0);
    EXPECT_TRUE(Shows(u"before"_qs));
    return braille;
  }

  const Variable terminal_{"WINDOWPATH", "7"};
  static std::unique_ptr<BrailleDaemon> daemon;
};

std::unique_ptr<BrailleDaemon> BrailleTest::daemon;

}  // namespace

TEST_F(BrailleTest, ATextIsShownWithItsCursorAndTheKeysOfTheLineMoveAlongIt) {
  BrlapiBraille braille;
  EXPECT_TRUE(FormDriver::Until([&] { return braille.IsPresent(); }));
  braille.SetActive(true);
  braille.Show(u"žluťoučký kůň"_qs, 3);
  EXPECT_TRUE(Shows(u"žluťoučký kůň"_qs));
  EXPECT_TRUE(FormDriver::Until([] { return daemon->CursorCell() == 4; })) << daemon->CursorCell();

  const QString beginning(40, u'a');
  braille.Show(beginning + u"konec"_qs, 42);
  EXPECT_TRUE(Shows(u"konec"_qs));
  daemon->Press("FWINLT");
  EXPECT_TRUE(Shows(beginning));
  daemon->Press("FWINRT");
  EXPECT_TRUE(Shows(u"konec"_qs));
  braille.Show(QString(), Braille::NoCursor);
  EXPECT_TRUE(Shows(QString()));
}

TEST_F(BrailleTest, TheLineIsGivenBackAndTakenAgain) {
  BrlapiConnection reader;
  ASSERT_TRUE(reader.Open() && reader.Enter(0) && reader.Write(u"reader"_qs, 0));
  ASSERT_TRUE(Shows(u"reader"_qs));

  const Variable window("WINDOWID", "77");
  BrlapiBraille braille;
  braille.Show(u"diary"_qs, 0);
  braille.SetActive(true);
  EXPECT_TRUE(Shows(u"diary"_qs));
  EXPECT_TRUE(reader.Write(u"under the diary"_qs, 0));
  braille.Show(u"still the diary"_qs, 0);
  EXPECT_TRUE(Shows(u"still the diary"_qs));
  EXPECT_FALSE(daemon->Visual().contains(u"under the diary"_qs));

  // Without a screen brltty draws only when somebody writes.
  braille.SetActive(false);
  braille.Show(u"never before it is taken again"_qs, 0);
  EXPECT_TRUE(FormDriver::Until([&] {
    reader.Write(u"reader %1"_qs.arg(daemon->Visual().size()), 0);
    return daemon->Shown().startsWith(u"reader"_qs);
  }));
  EXPECT_FALSE(daemon->Visual().contains(u"never before it is taken again"_qs));
  braille.SetActive(true);
  EXPECT_TRUE(Shows(u"never before it is taken again"_qs));
}

TEST_F(BrailleTest, AStoppedDaemonBlocksNoCallAndShowsTheNewestTextWhenItGoesOn) {
  const auto connected = Connected();
  daemon->Freeze();
  const qsizetype shown = daemon->Visual().size();
  auto connecting = std::make_unique<BrlapiBraille>();
  EXPECT_FALSE(connecting->IsPresent());
  for (int i = 0; i < 50; ++i) {
    connected->Show(u"text %1"_qs.arg(i), 0);
    connecting->Show(u"never"_qs, 0);
  }
  connecting.reset();
  connected->Show(u"newest"_qs, 0);
  daemon->Thaw();
  EXPECT_TRUE(Shows(u"newest"_qs));
  EXPECT_LE(daemon->Visual().mid(shown).filter(u"text"_qs).size(), 1);
}

TEST_F(BrailleTest, AKilledDaemonIsFoundAgain) {
  const auto braille = Connected();
  daemon->Kill();
  EXPECT_TRUE(FormDriver::Until([&] { return !braille->IsPresent(); }));
  braille->Show(u"lost"_qs, 0);
  ASSERT_TRUE(daemon->Start());
  EXPECT_TRUE(FormDriver::Until([&] { return braille->IsPresent(); })) << "the wish alone is search enough";
  EXPECT_TRUE(Shows(u"lost"_qs));
}

TEST_F(BrailleTest, WithoutADaemonThereIsNoLine) {
  const Variable nowhere("BRLAPI_HOST", "127.0.0.1:60999");
  BrlapiBraille braille;
  for (int i = 0; i < 100; ++i) braille.Show(u"nothing"_qs, 0);
  EXPECT_FALSE(braille.IsPresent());
}

}  // namespace talnik::test
