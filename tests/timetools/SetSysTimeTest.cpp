#include "timetools/TimeWorld.h"
#include "timetools/frmSetSysTime.h"

#include <QLabel>
#include <QPushButton>

namespace talnik::test {
namespace {

enum class Mode { SysTime, Countdown, Postpone, Task };

struct SetTimeWorld : TimeWorld {
  TimeEntry entry;
  Countdown countdown;
  QStringList shifts;

  /// Opens the dialog in a mode and plays the user in it.
  void Open(Mode mode, std::function<void(QWidget*)> user) {
    Next(std::move(user));
    frmSetSysTime form(services, names, entry, countdown, [this](int hours, int minutes, const QString& text) {
      shifts << u"%1,%2,%3"_qs.arg(hours).arg(minutes).arg(text);
    });
    form.SysTimeMode = mode == Mode::SysTime;
    form.CountdownMode = mode == Mode::Countdown;
    form.PostponeMode = mode == Mode::Postpone;
    form.Open();
    EXPECT_TRUE(driver.AllCame());
  }

  static void Fill(QWidget* window, const char* hours, const char* minutes) {
    Text(window, 0)->setText(QString::fromUtf8(hours));
    Text(window, 1)->setText(QString::fromUtf8(minutes));
  }
};

std::string Of(const QWidget* window, int index) {
  return window->findChild<QLineEdit*>(u"Text1(%1)"_qs.arg(index))->text().toStdString();
}

TEST(SetSysTime, EachModeHasItsCaptionTagFieldsAndButtons) {
  struct Case {
    Mode mode;
    bool running;
    const char *caption, *button;
    int tag;
    const char *hours, *minutes;
    bool date, duration;
  };
  for (const Case& test : {Case{Mode::SysTime, false, "Čas systému", "Nastavit čas", 1720, "08", "30", false, false},
                           Case{Mode::Countdown, false, "Minutky", "Nastavit", 1725, "", "", false, false},
                           Case{Mode::Countdown, true, "Minutky", "Nastavit", 1725, "15", "45", false, false},
                           Case{Mode::Postpone, false, "Odložit", "Nastavit", 1726, "00", "00", true, false},
                           Case{Mode::Task, false, "Čas úkolu", "Nastavit", 1727, "", "", false, true}}) {
    SetTimeWorld w;
    w.countdown = {test.running, At(2024, 1, 16, 0, 15, 59), false};
    w.Open(test.mode, [&](QWidget* window) {
      EXPECT_EQ(window->windowTitle().toStdString(), test.caption);
      EXPECT_EQ(window->property("windowTag").toInt(), test.tag);
      EXPECT_EQ(FormDriver::Find<QPushButton>(window, "cmdSet")->text().toStdString(), test.button);
      EXPECT_EQ(FormDriver::Find<QPushButton>(window, "cmdSetDate")->isVisible(), test.date);
      EXPECT_EQ(FormDriver::Find<QPushButton>(window, "cmdDuration")->isVisible(), test.duration);
      EXPECT_EQ(Of(window, 0), test.hours);
      EXPECT_EQ(Of(window, 1), test.minutes);
      EXPECT_EQ(FormDriver::Find<QLabel>(window, "Label1(1)")->buddy(), SetTimeWorld::Text(window, 1));
      const std::string field = test.hours[0] ? std::string("hodin: ") + test.hours : "hodin:";
      EXPECT_EQ(w.Heard(), std::string("say: ") + test.caption + "; and: " + field);
      w.driver.Press(Qt::Key_Escape);
    });
  }
}

TEST(SetSysTime, EveryFieldKeyIsAnswered) {
  SetTimeWorld w;
  w.Open(Mode::Postpone, [&](QWidget* window) {
    EXPECT_EQ(w.After(Qt::Key_Down), "say: 01");
    EXPECT_EQ(w.After(Qt::Key_Down, Qt::ControlModifier), "say: 11");
    EXPECT_EQ(w.After(Qt::Key_Plus, Qt::KeypadModifier), "say: 12");
    EXPECT_EQ(w.After(Qt::Key_Minus, Qt::KeypadModifier), "say: 11");
    EXPECT_EQ(w.After(Qt::Key_Up), "say: 10");
    EXPECT_EQ(w.After(Qt::Key_Home), "char: 1");
    EXPECT_EQ(w.After(Qt::Key_Right), "char: 0");
    EXPECT_EQ(w.After(Qt::Key_Right), "sound: end.wav");
    EXPECT_EQ(w.After(Qt::Key_X), "sound: refused.wav");
    EXPECT_EQ(w.After(Qt::Key_Plus), "sound: refused.wav");
    EXPECT_EQ(w.After(Qt::Key_Backspace), "char: 1");
    EXPECT_EQ(w.After(Qt::Key_Backspace), "sound: empty.wav");
    EXPECT_EQ(w.After(Qt::Key_2), "char: 2");
    EXPECT_EQ(w.After(Qt::Key_Tab), "say: minut: 00");
    EXPECT_EQ(SetTimeWorld::Text(window, 1)->selectedText().toStdString(), "00");
    for (const char* button : {"Nastavit", "Vybrat datum a čas", "Storno"})
      EXPECT_EQ(w.After(Qt::Key_Tab), std::string("say: ") + button);
    EXPECT_EQ(w.After(Qt::Key_Tab), "say: hodin: 2");
    w.driver.Press(Qt::Key_Escape);
  });
}

TEST(SetSysTime, SevenAndFiveAreSevenHoursAndFiveMinutesWithTheFocusThere) {
  SetTimeWorld w;
  w.Open(Mode::Task, [&](QWidget* window) {
    w.Heard();
    w.Keys({Qt::Key_7, Qt::Key_5});
    EXPECT_EQ(w.Heard(), "char: 7; char: 5");
    EXPECT_EQ(Of(window, 0) + ":" + Of(window, 1), "07:5");
    EXPECT_EQ(window->focusWidget(), SetTimeWorld::Text(window, 1));
    w.Keys({Qt::Key_3, Qt::Key_1});
    EXPECT_EQ(Of(window, 1), "53");
    EXPECT_EQ(w.Heard(), "char: 3; sound: refused.wav");
    SetTimeWorld::Text(window, 1)->clear();
    SetTimeWorld::Text(window, 1)->insert(u"ab"_qs);
    EXPECT_EQ(Of(window, 1), "") << "nothing but digits is pasted";
    w.driver.Press(Qt::Key_Escape);
  });
}

TEST(SetSysTime, ACountdownIsSetReplacedCancelledAndRefused) {
  SetTimeWorld w;
  w.world.clock.Moment = QDateTime(QDate(2024, 1, 15), QTime(23, 59, 30));
  w.Open(Mode::Countdown, [&](QWidget* window) {
    EXPECT_EQ(w.After(Qt::Key_Return), "sound: refused.wav");
    SetTimeWorld::Fill(window, "0", "75");
    EXPECT_EQ(w.After(Qt::Key_Return), "sound: refused.wav");
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(Of(window, 1), "75");
    SetTimeWorld::Fill(window, "", "1");
    EXPECT_EQ(w.After(Qt::Key_Return), "say: minutky nastaveny");
  });
  EXPECT_TRUE(w.countdown.CountdownRunning);
  EXPECT_EQ(w.countdown.CountdownEnd, At(2024, 1, 16, 0, 0, 30));
  w.Open(Mode::Countdown, [&](QWidget* window) {
    EXPECT_EQ(Of(window, 1), "01");
    SetTimeWorld::Fill(window, "", "");
    EXPECT_EQ(w.After(Qt::Key_Return), "say: minutky zrušeny");
  });
  EXPECT_FALSE(w.countdown.CountdownRunning);
}

TEST(SetSysTime, TheClockIsSetOrTheRefusalIsTold) {
  struct Case {
    Clock::Outcome answer;
    QString description;
    const char* told;
  };
  for (const Case& test : {Case{Clock::Outcome::Done, QString(), ""},
                           Case{Clock::Outcome::NotPermitted, u"no"_qs, "K nastavení nemáte oprávnění."},
                           Case{Clock::Outcome::Failed, u"NTP běží"_qs, "NTP běží"}}) {
    SetTimeWorld w;
    w.world.clock.Answer = test.answer;
    w.world.clock.Description = test.description;
    std::string told;
    w.Open(Mode::SysTime, [&](QWidget* window) {
      SetTimeWorld::Fill(window, "", "5");
      EXPECT_EQ(w.After(Qt::Key_Return), "sound: refused.wav");
      SetTimeWorld::Fill(window, "25", "5");
      EXPECT_EQ(w.After(Qt::Key_Return), "sound: refused.wav");
      SetTimeWorld::Fill(window, "9", "5");
      if (test.told[0]) {
        w.Next([&](QWidget* message) {
          EXPECT_EQ(message->property("windowTag").toInt(), 806);
          told = w.Heard();
          w.driver.Press(Qt::Key_Return);
        });
      }
      w.After(Qt::Key_Return);
    });
    EXPECT_NE(told.find(test.told), std::string::npos) << told;
    EXPECT_EQ(w.world.clock.SetTo, QDateTime(QDate(2024, 1, 15), QTime(9, 5)));
  }
}

TEST(SetSysTime, ADelayTakesWhatIsNoTimeAsZero) {
  struct Case {
    const char *hours, *minutes;
    Date delay;
  };
  for (const Case& test : {Case{"1", "30", At(1899, 12, 30, 1, 30)}, Case{"24", "75", At(1899, 12, 30)},
                           Case{"", "5", At(1899, 12, 30, 0, 5)}}) {
    SetTimeWorld w;
    w.Open(Mode::Postpone, [&](QWidget* window) {
      SetTimeWorld::Fill(window, test.hours, test.minutes);
      w.driver.Press(Qt::Key_Return);
    });
    EXPECT_TRUE(w.entry.DelayTimeSet);
    EXPECT_EQ(w.entry.DelayValue, test.delay);
    EXPECT_TRUE(w.shifts.isEmpty());
  }
}

TEST(SetSysTime, AChosenDateShiftsTheAlarmAtOnce) {
  for (const bool moved : {true, false}) {
    SetTimeWorld w;
    w.entry.DelayStartText = u"15.1.2024 9:00"_qs;
    w.Open(Mode::Postpone, [&](QWidget* window) {
      w.Next([&](QWidget* picker) {
        EXPECT_EQ(picker->property("windowTag").toInt(), 1717);
        if (moved) w.driver.Press(Qt::Key_Down);
        w.driver.Press(Qt::Key_Return);
      });
      FormDriver::Find<QPushButton>(window, "cmdSetDate")->click();
    });
    EXPECT_EQ(w.shifts, moved ? QStringList{u"0,0,16.1.2024 9:00"_qs} : QStringList());
    EXPECT_EQ(w.entry.DelayDateChosen, moved);
    EXPECT_FALSE(w.entry.DelayTimeSet);
  }
}

TEST(SetSysTime, TheTimeOfATaskCompletesItsText) {
  struct Case {
    const char *hours, *minutes;
    int key;
    const char* text;
    bool cancelled, empty;
  };
  for (const Case& test :
       {Case{"9", "05", Qt::Key_Return, "15.1.2024 9:05:00", false, false},
        Case{"", "5", Qt::Key_Return, "15.1.2024 00:5:00", false, false},
        Case{"", "", Qt::Key_Return, "15.1.2024", false, true},
        Case{"9", "05", Qt::Key_Escape, "15.1.2024", false, false}, Case{"9", "05", Qt::Key_F1, "", true, false}}) {
    SetTimeWorld w;
    w.entry.StartTask(u"15.1.2024"_qs);
    w.Open(Mode::Task, [&](QWidget* window) {
      SetTimeWorld::Fill(window, "24", "0");
      EXPECT_EQ(w.After(Qt::Key_Return), "sound: refused.wav");
      SetTimeWorld::Fill(window, test.hours, test.minutes);
      if (test.key == Qt::Key_F1) return FormDriver::Find<QPushButton>(window, "cmdCancel")->click();
      w.driver.Press(test.key);
    });
    EXPECT_EQ(w.entry.TaskTimeText.toStdString(), test.text);
    EXPECT_EQ(w.entry.TaskTimeCancelled, test.cancelled);
    EXPECT_EQ(w.entry.TaskTimeEmpty, test.empty);
    EXPECT_FALSE(w.entry.HasEndPreset);
  }
}

TEST(SetSysTime, StornoOfADelayTakesBackWhatWasSet) {
  SetTimeWorld w;
  w.entry.DelayTimeSet = true;
  w.Open(Mode::Postpone, [&](QWidget* window) { FormDriver::Find<QPushButton>(window, "cmdCancel")->click(); });
  EXPECT_FALSE(w.entry.DelayTimeSet);
  EXPECT_FALSE(w.entry.TaskTimeCancelled);
}

TEST(SetSysTime, AnEndBeforeTheStartIsWarnedOfAndAskedAgain) {
  SetTimeWorld w;
  w.entry.StartTask(u"15.1.2024"_qs);
  w.Open(Mode::Task, [&](QWidget* window) {
    SetTimeWorld::Fill(window, "10", "");
    w.Next([&](QWidget* picker) {
      EXPECT_EQ(Of(picker, 0) + ":" + Of(picker, 1), "10:00");
      w.Keys({Qt::Key_Up, Qt::Key_Return});
    });
    w.Next([&](QWidget*) {
      EXPECT_NE(w.Heard().find("Čas ukončení je před časem počátku. Upravte tento údaj."), std::string::npos);
      EXPECT_FALSE(w.entry.HasEndPreset);
      w.driver.Press(Qt::Key_Return);
    });
    w.Next([&](QWidget*) { w.Keys({Qt::Key_Down, Qt::Key_Tab, Qt::Key_Down, Qt::Key_Return}); });
    FormDriver::Find<QPushButton>(window, "cmdDuration")->click();
    EXPECT_TRUE(w.entry.HasEndPreset);
    EXPECT_EQ(w.entry.EndPreset, At(2024, 1, 15, 11, 0));
    w.driver.Press(Qt::Key_Return);
  });
  EXPECT_EQ(w.entry.TaskTimeText.toStdString(), "15.1.2024 10:00:00");
}

}  // namespace
}  // namespace talnik::test
