#include "calendar/MainWindow.h"
#include "calendar/NameDays.h"

#include <QClipboard>
#include <QGuiApplication>

namespace talnik::test {
namespace {

TEST(NameDays, SlotsAreTwelveMonthsOfThirtyOneDays) {
  const std::pair<int, const char*> lines[] = {{1, "1.1"}, {31, "31.1"}, {32, "1.2"}, {60, "29.2"}, {372, "31.12"}};
  for (const auto& [line, day] : lines) {
    EXPECT_EQ(NameDays::DayFromLine(line).toStdString(), day);
    const auto parts = NameDays::DayFromLine(line).split(u'.');
    EXPECT_EQ(NameDays::Slot(parts[1].toInt(), parts[0].toInt()), line - 1);
  }
  EXPECT_EQ(NameDays::Slot(13, 1), -1);
}

TEST(NameDays, FilesOfEveryStateAreKept) {
  const QTemporaryDir folder;
  const FakeCodePage codePage;
  const QString path = folder.filePath(u"Names.dat"_qs);
  NameDays names;
  EXPECT_FALSE(names.LoadNames(path, codePage));
  EXPECT_FALSE(names.SetNameOfDay(1, 1, u"x"_qs));
  EXPECT_TRUE(names.SaveNames(path, codePage));
  EXPECT_FALSE(QFile::exists(path)) << "nothing is written over a file that could not be read";

  WriteFile(path, "Nový rok\r\nKarina\r\n\r\n");
  ASSERT_TRUE(names.LoadNames(path, codePage));
  EXPECT_EQ(names.NameOfDay(1, 2), u"Karina"_qs);
  EXPECT_EQ(names.NameOfDay(12, 31), QString());
  EXPECT_TRUE(names.SetNameOfDay(1, 3, u"Radmila\nRadek\r\n"_qs));
  EXPECT_TRUE(names.SaveNames(path, codePage));
  EXPECT_EQ(ReadFile(path), QByteArray("Nový rok\r\nKarina\r\nRadmilaRadek\r\n"));

  WriteFile(path, QByteArray("x\r\n").repeated(500));
  ASSERT_TRUE(names.LoadNames(path, codePage));
  EXPECT_TRUE(names.SaveNames(path, codePage));
  EXPECT_EQ(ReadFile(path).count('\n'), 372);
  EXPECT_FALSE(names.SaveNames(folder.path(), codePage));
}

TEST(NameDays, TheSearchGoesOnThroughTheYear) {
  const QTemporaryDir folder;
  WriteFile(folder.filePath(u"n"_qs), "Jan\r\nEva\r\nJANA\r\nJohana\r\n");
  NameDays names;
  NameSearch search;
  search.SearchText = u"jan"_qs;
  EXPECT_EQ(search.Next(names), NameSearch::Outcome::NoNames);
  ASSERT_TRUE(names.LoadNames(folder.filePath(u"n"_qs), FakeCodePage()));
  QList<int> hits;
  while (search.Next(names) == NameSearch::Outcome::Found) hits << search.LastHit();
  EXPECT_EQ(hits, (QList<int>{1, 3}));
  EXPECT_EQ(search.LastHit(), 372);
  EXPECT_EQ(search.Next(names), NameSearch::Outcome::End);
}

class NamesInWindow : public MainWindow {
 protected:
  void TypeInNames(const QString& text) {
    main_->txtNames->setFocus();
    user_.Type(text);
  }
};

TEST_F(NamesInWindow, ChangesAreAskedAboutWhenTheFieldIsLeft) {
  Start();
  TypeInNames(u"Ň"_qs);
  user_.ExpectAndPress(u"frmMsg12"_qs, Qt::Key_Escape);
  user_.Press(Qt::Key_Tab);
  EXPECT_EQ(main_->txtNames->toPlainText(), u"Alice"_qs);
  ASSERT_TRUE(ComesToFront());

  TypeInNames(u"Ňa "_qs);
  ExpectClick("cmdYES");
  user_.Press(Qt::Key_Tab);
  EXPECT_TRUE(user_.AllCame());
  GoTo(u"16.1.2024"_qs);
  EXPECT_EQ(main_->txtNames->toPlainText(), QString());
  GoTo(u"15.1.2025"_qs);
  EXPECT_EQ(main_->txtNames->toPlainText(), u"Ňa Alice"_qs);
  EXPECT_FALSE(ReadFile(InData("Names.dat")).contains("Ňa"));
  Choose("mnuExit");
  EXPECT_EQ(ReadFile(InData("Names.dat")).split('\n').value(14), QByteArray("Ňa Alice\r"));
}

TEST_F(NamesInWindow, ATextOfAnyLengthDoesNotHoldUpTheKeys) {
  Start();
  main_->txtNames->setFocus();
  QGuiApplication::clipboard()->setText(QString(10'000'000, u'x'));
  main_->txtNames->selectAll();
  world_.Heard();
  main_->txtNames->paste();
  EXPECT_EQ(Heard(), "sound: refused.wav");
  EXPECT_EQ(main_->txtNames->Text().size(), 1000);
  Choose("mnuHolSave");
  user_.Press(Qt::Key_Tab);
  EXPECT_EQ(main_->txtNames->Text().size(), 1000) << "kept without a question";
}

TEST_F(NamesInWindow, ANameIsFoundInThisYear) {
  Start();
  EXPECT_FALSE(Menu("mnuHolFindNext")->isEnabled());
  ExpectPlay("frmFindHolDay", u"'al' | Return"_qs);
  GoTo(u"3.3.2030"_qs);
  Choose("mnuHolFind");
  EXPECT_EQ(DayAndMonth(), u"15. pondělí leden 2024"_qs);
  Choose("mnuHolFindNext");
  EXPECT_EQ(DayAndMonth(), u"28. pátek červen 2024"_qs);
  user_.ExpectAndPress(u"frmMsg12"_qs, Qt::Key_Return);
  Choose("mnuHolFindNext");
  EXPECT_TRUE(user_.AllCame());
  EXPECT_FALSE(Menu("mnuHolFindNext")->isEnabled());
}

}  // namespace
}  // namespace talnik::test
