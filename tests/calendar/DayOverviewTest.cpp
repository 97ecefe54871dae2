#include "calendar/BackToMain.h"
#include "calendar/DayOverview.h"
#include "calendar/MainWindow.h"
#include "recurrence/EditSeries.h"
#include "recurrence/RecurrPopulate.h"
#include "shell/cSetting.h"
#include "store/Recordset.h"
#include "store/Statements.h"

#include <QAction>
#include <QRadioButton>

namespace talnik::test {
namespace {

const Date kDay = *Date::FromParts(2024, 1, 15);

DayItem Item(const QString& start, const QString& end, const QString& text = u"x"_qs) {
  return {CDate(start, kDay), CDate(end, kDay), text, {}, false, false};
}

std::string Lines(const QList<DayItem>& items) {
  QStringList lines;
  for (const DayItem& item : items) lines << FormatItem(item, true);
  return lines.join(u'|').toStdString();
}

TEST(DayOverview, ALineHoldsTimesAndText) {
  const std::tuple<QString, QString, const char*> rows[] = {
      {u"15.1.2024 8:05"_qs, u"15.1.2024 9:30"_qs, "08:05 až 09:30 x"},
      {u"15.1.2024 8:05"_qs, u"15.1.2024 8:05"_qs, "08:05 x"},
      {u"15.1.2024 8:05"_qs, {}, "08:05 x"},
      {u"15.1.2024"_qs, u"15.1.2024"_qs, "x"},
      {u"15.1.2024"_qs, u"15.1.2024 10:00"_qs, "00:00 až 10:00 x"},
      {u"14.1.2024 20:00"_qs, u"15.1.2024 8:00"_qs, "20:00 až 08:00 15.1.2024 x"},
      {u"15.1.2024 20:00"_qs, u"16.1.2024"_qs, "20:00 až 00:00 16.1.2024 x"},
      {u"14.1.2024"_qs, u"17.1.2024"_qs, "až 17.1.2024 x"},
      {{}, u"15.1.2024 8:00"_qs, "až 08:00 15.1.2024 x"},
  };
  for (const auto& [start, end, line] : rows) {
    EXPECT_EQ(FormatItem(Item(start, end), true).toStdString(), line) << "from " << start.toStdString();
  }
  EXPECT_EQ(FormatItem(Item(u"15.1.2024 8:00"_qs, {}, u"a\r\nb"_qs), true), u"08:00 a b"_qs);
  EXPECT_EQ(FormatItem(Item(u"15.1.2024 8:00"_qs, {}), false), u"08:00"_qs);
}

TEST(DayOverview, FreeTimeLiesBetweenTheTasks) {
  struct Case {
    QList<DayItem> items;
    const char* lines;
  };
  const auto at = [](const char* from, const char* to) {
    const auto moment = [](const char* text) {
      const QString time = QString::fromLatin1(text);
      return time.contains(u'.') ? time : QString(u"15.1.2024 "_qs + time);
    };
    return Item(moment(from), moment(to));
  };
  const Case cases[] = {
      {{}, "00:00 až 23:59"},
      {{at("8:00", "9:00")}, "00:00 až 07:59|08:00 až 09:00 x|09:01 až 23:59"},
      {{at("8:00", "8:59"), at("9:00", "9:30")}, "00:00 až 07:59|08:00 až 08:59 x|09:00 až 09:30 x|09:31 až 23:59"},
      {{at("8:00", "8:59"), at("10:00", "23:59")}, "00:00 až 07:59|08:00 až 08:59 x|09:00 až 09:59|10:00 až 23:59 x"},
      {{at("8:00", "12:00"), at("9:00", "10:00"), at("11:00", "13:00")},
       "00:00 až 07:59|08:00 až 12:00 x|09:00 až 10:00 x|11:00 až 13:00 x|13:01 až 23:59"},
      {{at("14.1.2024 20:00", "8:00")}, "20:00 až 08:00 15.1.2024 x|08:01 až 23:59"},
      {{at("22:00", "16.1.2024 0:00")}, "00:00 až 21:59|22:00 až 00:00 16.1.2024 x"},
      {{at("13.1.2024 5:00", "17.1.2024 5:00")}, "05:00 až 05:00 17.1.2024 x"},
      {{at("15.1.2024", "15.1.2024")}, "x"},
      {{at("0:01", "23:58")}, "00:00 až 00:00|00:01 až 23:58 x|23:59 až 23:59"},
      {{at("9:00", "8:00")}, "00:00 až 08:59|09:00 až 08:00 x|09:01 až 23:59"},
  };
  for (const Case& one : cases) EXPECT_EQ(Lines(WithFreeTime(one.items, kDay)), one.lines);
  const QList<DayItem> empty = WithFreeTime({}, kDay);
  EXPECT_EQ(*empty.front().start, kDay);
  EXPECT_EQ(DateText(*empty.front().end), u"15.1.2024 23:59:59"_qs);
  EXPECT_EQ(empty.front().text, u"$FREE"_qs);
}

TEST(DayOverview, TheEditorOpensOnTheChosenRecord) {
  QList<DayItem> items{Item(u"1:00"_qs, {}, u"a"_qs), Item(u"2:00"_qs, {}, u"b"_qs), Item(u"2:00"_qs, {}, u"b"_qs),
                       Item(u"3:00"_qs, {}, u"c"_qs), Item(u"4:00"_qs, {}, u"d"_qs)};
  items[2].isHidden = items[4].isHidden = true;
  const std::pair<qsizetype, int> rows[] = {{0, 0}, {1, 1}, {2, 1}, {3, 2}, {4, 2}};
  for (const auto& [index, before] : rows) EXPECT_EQ(RecordsBefore(items, index), before) << index;
  EXPECT_FALSE(RecordsBefore(items, -1));
  EXPECT_FALSE(RecordsBefore(items.mid(4), 0)) << "there is nothing to show";
}

class DayView : public MainWindow {
 protected:
  ListBox* List(QWidget* window) { return FormDriver::Find<ListBox>(window, "List1"); }
  std::string ListLines(QWidget* window) {
    QStringList lines;
    for (int i = 0; i < List(window)->ListCount(); ++i) lines << List(window)->Line(i);
    return lines.join(u'|').toStdString();
  }
  /// Opens the overview by key and lets `act` use it; closes it.
  void Overview(const std::function<void(QWidget*)>& act) {
    user_.Expect([this, act](QWidget* window) {
      EXPECT_EQ(window->objectName(), u"frmDayView"_qs);
      FormDriver::Settle();
      act(window);
      if (window->isVisible()) user_.Press(Qt::Key_Escape, Qt::NoModifier, window);
    });
    user_.Press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_TRUE(user_.AllCame());
  }
  void PressInList(QWidget* window, int key) {
    user_.Press(key, Qt::NoModifier, List(window));
    FormDriver::Settle();
  }
  void ComeBack(QWidget* window) {
    ASSERT_TRUE(FormDriver::Until([window] { return window->isActiveWindow(); }));
    FormDriver::Settle();
  }
  bool HeardLast(const std::string& line) { return Heard().ends_with(line); }
  /// Adds a daily series of three with its first occurrence on the day.
  void AddSeries(const QString& text) {
    Add(text, u"15.1.2024 7:00"_qs, u"15.1.2024 7:30"_qs);
    const QString rule = u" RRULE:FREQ=DAILY INTERVAL=1 COUNT=3"_qs;
    Execute({u"UPDATE schedule SET recur=?, status=?"_qs, {rule, int{StatusRoot}}});
    Store store(InData("talnik.MDB"));
    ASSERT_TRUE(RebuildOccurrences(store, {.now = kDay, .biases = world_.timeZone.Zone}));
  }
};

TEST_F(DayView, ReadsEachLineAndBothOptions) {
  Add(u"noc"_qs, u"14.1.2024 20:00"_qs, u"15.1.2024 6:00"_qs);
  Add(u"porada"_qs, u"15.1.2024 9:00"_qs, u"15.1.2024 10:00"_qs);
  Start();
  Heard();
  Overview([this](QWidget* window) {
    EXPECT_EQ(window->windowTitle(), u"15.1.2024 - úkoly"_qs);
    EXPECT_EQ(Heard(), "say: 15.1.2024 - úkoly\nand: 20:00 až 06:00 15.1.2024 noc");
    Play(u"Down > say: 09:00 až 10:00 porada | Down > sound: end.wav\nsay: 09:00 až 10:00 porada"_qs, window);
    Play(u"Shift+Tab > say: Úkoly"_qs, window);  // the chosen one, not the nearest one
    auto* freeTime = FormDriver::Find<QRadioButton>(window, "optFreeTime(1)");
    freeTime->click();
    EXPECT_EQ(Heard(), "say: Volný čas");
    EXPECT_EQ(ListLines(window), "20:00 až 06:00 15.1.2024 noc|06:01 až 08:59|09:00 až 10:00 porada|10:01 až 23:59");
    EXPECT_FALSE(FormDriver::Find<QPushButton>(window, "cmdGoTo")->isEnabled());
    freeTime->setFocus();
    FormDriver::Settle();
    Play(u"Up > say: Úkoly | Down > say: Volný čas | Down > sound: end.wav"_qs, window);
    // Enter goes to the list; there is no record in a gap.
    Play(u"Return > say: 20:00 až 06:00 15.1.2024 noc | Down > say: 06:01 až 08:59"_qs, window);
    Play(u"Return > sound: refused.wav | F8 > sound: refused.wav"_qs, window);
  });
  ASSERT_TRUE(ComesToFront());
  EXPECT_TRUE(HeardLast("say: 15. pondělí 2 úkolů"));
  Overview([this](QWidget* window) { EXPECT_EQ(List(window)->ListCount(), 4) << "the option is remembered"; });
}

TEST_F(DayView, APlayedNoteStandsInForTheVoice) {
  Add(u"porada"_qs, u"15.1.2024 9:00"_qs);
  SetNote(u"porada"_qs, u"A15083.200"_qs);
  Start();
  Overview([this](QWidget* window) {
    Heard();
    PressInList(window, Qt::Key_Down);
    EXPECT_TRUE(HeardLast("say: 09:00 porada\nsound: A15083.200"));
    world_.voice.Speaking = true;
    PressInList(window, Qt::Key_Down);
    EXPECT_TRUE(HeardLast("say: 09:00 porada"));
  });
}

TEST_F(DayView, GoesToTheChosenTaskAndComesBackToTheDay) {
  Add(u"noc"_qs, u"14.1.2024 20:00"_qs, u"15.1.2024 6:00"_qs);
  Add(u"porada"_qs, u"15.1.2024 9:00"_qs);
  Start();
  Overview([this](QWidget* window) {
    PressInList(window, Qt::Key_Down);
    ExpectPlay("frmSchedule", u"txtPos:2/2 | mnuPrev | mnuExit"_qs);
    PressInList(window, Qt::Key_Return);
    ComeBack(window);
    EXPECT_EQ(window->windowTitle(), u"15.1.2024 - úkoly"_qs);
    EXPECT_TRUE(HeardLast("say: 20:00 až 06:00 15.1.2024 noc"));
  });
  ASSERT_TRUE(ComesToFront());
  EXPECT_EQ(DayAndMonth(), u"14. neděle leden 2024"_qs) << "the day of the record last on screen";
}

TEST_F(DayView, AGapSuggestsTheTimeOfANewTask) {
  Add(u"porada"_qs, u"15.1.2024 9:00"_qs, u"15.1.2024 10:00"_qs);
  Start();
  Overview([this](QWidget* window) {
    Play(u"optFreeTime(1) | @List1 | End"_qs, window);
    ExpectPlay("frmSetSysTime", u"Text1(0):10 | Text1(1):01 | cmdSet"_qs);
    ExpectPlay("frmSchedule", u"Text3:15.1.2024 10:01 | cmdOK"_qs);
    PressInList(window, Qt::Key_Insert);
    ComeBack(window);
    EXPECT_TRUE(user_.AllCame());
    EXPECT_EQ(ListLines(window), "00:00 až 08:59|09:00 až 10:00 porada|10:01|10:02 až 23:59");
    EXPECT_TRUE(HeardLast("say: 00:00 až 08:59")) << "the list begins anew";

    Play(u"optFreeTime(0) | @List1"_qs, window);
    ExpectPlay("frmSetSysTime", u"Text1(0): | Escape"_qs);  // a task suggests nothing
    user_.ExpectAndPress(u"frmSchedule"_qs, Qt::Key_Escape);
    PressInList(window, Qt::Key_Insert);
    ComeBack(window);
    EXPECT_TRUE(HeardLast("say: 09:00 až 10:00 porada"));
  });
}

TEST_F(DayView, DeletesARecordWithItsNote) {
  for (const char* text : {"dopis", "porada"})
    Add(QString::fromLatin1(text), u"15.1.2024 9:00"_qs, {}, u"15.1.2024 8:45"_qs);
  Start();
  for (const char* name : {"Record/shared", "Record/own"}) WriteFile(InData(name));
  SetNote(u"dopis"_qs, u"shared"_qs);
  SetNote(u"porada"_qs, InData("Record/shared"));
  Overview([this](QWidget* window) {
    user_.ExpectAndPress(u"frmMsg12"_qs, Qt::Key_Return);  // the second button is the default
    PressInList(window, Qt::Key_F8);
    ComeBack(window);
    EXPECT_EQ(RowCount(), 2);
    ExpectMessage(u"Smazat záznam 09:00 dopis?"_qs);
    PressInList(window, Qt::Key_F8);
    ComeBack(window);
    EXPECT_TRUE(HeardLast("say: 09:00 porada"));
    EXPECT_TRUE(QFile::exists(InData("Record/shared"))) << "the other record plays it";
    SetNote(u"porada"_qs, u"own"_qs);
    Play(u"optFreeTime(1) | optFreeTime(0) | @List1"_qs, window);
    ExpectMessage(u"Smazat záznam 09:00 porada?"_qs);
    PressInList(window, Qt::Key_F8);
    ComeBack(window);
    EXPECT_TRUE(HeardLast("say: žádné úkoly"));
    EXPECT_FALSE(QFile::exists(InData("Record/own")));
    Play(u"F8 > sound: refused.wav | Return > sound: refused.wav"_qs, window);
  });
  EXPECT_EQ(RowCount(), 0);
  EXPECT_FALSE(Menu("mnuSpareTime")->isEnabled());
}

TEST_F(DayView, ADeletedOccurrenceStaysAwayAndItsSeriesStays) {
  AddSeries(u"cvičení"_qs);
  Start();
  Overview([this](QWidget* window) {
    EXPECT_EQ(ListLines(window), "07:00 až 07:30 cvičení|07:00 až 07:30 cvičení") << "the root is a row of the day too";
    ExpectMessage(u"Smazat záznam 07:00 až 07:30 cvičení?"_qs);
    PressInList(window, Qt::Key_F8);
    ComeBack(window);
    EXPECT_TRUE(HeardLast("say: žádné úkoly"));
  });
  Store store(InData("talnik.MDB"));
  ASSERT_TRUE(RebuildOccurrences(store, {.now = kDay, .biases = world_.timeZone.Zone}));
  EXPECT_EQ(store.Number(statements::CountOfDay(kDay)), 0);
  EXPECT_EQ(store.Number(statements::CountOfDay(*DateAdd(DateUnit::Day, 1, kDay))), 1);
}

TEST_F(DayView, ARootIsDeletedOnlyAsAWholeSeries) {
  AddSeries(u"cvičení"_qs);
  Store store(InData("talnik.MDB"));
  Add(u"jiný"_qs, u"15.1.2024 9:00"_qs);
  ASSERT_TRUE(
      store.Execute(statements::DeleteOccurrencesOfDay(Recordset::Open(store, statements::Roots())->Row().guid, kDay)));
  Start();
  for (const char* answer : {"cmdCancel", "cmdAll"}) {
    Overview([this, answer](QWidget* window) {
      ExpectMessage(u"Smazat záznam 07:00 až 07:30 cvičení?"_qs);
      ExpectClick(answer);
      PressInList(window, Qt::Key_F8);
      ComeBack(window);
    });
    ASSERT_TRUE(ComesToFront());
    EXPECT_EQ(RowCount(), QLatin1String(answer) == u"cmdAll"_qs ? 1 : 4);
  }
}

/// A desktop with another program's window.
class OtherWindows : public FakeShell {
 public:
  ForeignWindowInfo WindowWithFocus() override { return Focused; }
  bool WindowExists(quint64 handle) override { return handle == Open_; }
  ForeignWindowInfo Focused;
  quint64 Open_ = 0;
};

TEST(BackToMain, WaitsForTheWindowAndForItsEnd) {
  OtherWindows desktop;
  BackToMain wait;
  EXPECT_FALSE(wait.Tick(desktop)) << "nothing was started";
  wait.Start();
  desktop.Focused = {7, u"Dopis"_qs};
  EXPECT_FALSE(wait.Tick(desktop));
  desktop.Focused = {8, u"Nastavení hlasu"_qs};
  desktop.Open_ = 8;
  EXPECT_FALSE(wait.Tick(desktop));
  wait.Start();
  desktop.Focused = {9, u"O programu Talník"_qs};
  desktop.Open_ = 9;
  EXPECT_FALSE(wait.Tick(desktop)) << "the wait has begun anew";
  desktop.Focused = {};
  EXPECT_FALSE(wait.Tick(desktop));
  desktop.Open_ = 0;
  EXPECT_TRUE(wait.Tick(desktop));
  EXPECT_FALSE(wait.IsWaiting());
}

}  // namespace
}  // namespace talnik::test
