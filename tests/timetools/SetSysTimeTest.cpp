#include "timetools/TimeWorld.h"
#include "timetools/frmSetSysTime.h"

#include <QLabel>
#include <QPushButton>

#include <tuple>

namespace talnik::test {
namespace {

enum class Mode { SysTime, Countdown, Postpone, Task };

struct SetTimeWorld : TimeWorld {
  TimeEntry entry;
  Countdown countdown;
  QStringList shifts;

  SetTimeWorld() { entry.StartTask(u"15.1.2024"_qs); }

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
};

TEST(SetSysTime, EachModeHasItsCaptionTagFieldsAndButtons) {
  const std::tuple<Mode, bool, const char*, const char*, int, const char*, bool, bool> modes[] = {
      {Mode::SysTime, false, "Čas systému", "Nastavit čas", 1720, "08:30", false, false},
      {Mode::Countdown, false, "Minutky", "Nastavit", 1725, ":", false, false},
      {Mode::Countdown, true, "Minutky", "Nastavit", 1725, "15:45", false, false},
      {Mode::Postpone, false, "Odložit", "Nastavit", 1726, "00:00", true, false},
      {Mode::Task, false, "Čas úkolu", "Nastavit", 1727, ":", false, true}};
  for (const auto& [mode, running, caption, button, tag, time, date, duration] : modes) {
    SetTimeWorld w;
    w.countdown = {running, At(2024, 1, 16, 0, 15, 59), false};
    w.Open(mode, [&, caption = caption, button = button, tag = tag, time = time, date = date,
                  duration = duration](QWidget* window) {
      EXPECT_EQ(window->windowTitle().toStdString(), caption);
      EXPECT_EQ(window->property("windowTag").toInt(), tag);
      EXPECT_EQ(FormDriver::Find<QPushButton>(window, "cmdSet")->text().toStdString(), button);
      EXPECT_EQ(FormDriver::Find<QPushButton>(window, "cmdSetDate")->isVisible(), date);
      EXPECT_EQ(FormDriver::Find<QPushButton>(window, "cmdDuration")->isVisible(), duration);
      EXPECT_EQ(SetTimeWorld::Time(window), time);
      EXPECT_EQ(FormDriver::Find<QLabel>(window, "Label1(1)")->buddy(), SetTimeWorld::Text(window, 1));
      EXPECT_EQ(w.Heard().find(std::string("say: ") + caption + "; and: hodin:"), 0U);
      w.Press("Esc");
    });
  }
}

TEST(SetSysTime, EveryKeyOfTheFieldsIsAnswered) {
  SetTimeWorld w;
  w.Open(Mode::Postpone, [&](QWidget* window) {
    w.Play(
        "Down > say: 01 | Ctrl+Down > say: 11 | Num++ > say: 12 | Num+- > say: 11 | Up > say: 10 | "
        "Home > char: 1 | Right > char: 0 | Right > sound: end.wav | X > sound: refused.wav | "
        "+ > sound: refused.wav | Backspace > char: 1 | Backspace > sound: empty.wav | 2 > char: 2 | "
        "Tab > say: minut: 00");
    EXPECT_EQ(SetTimeWorld::Text(window, 1)->selectedText().toStdString(), "00");
    SetTimeWorld::Text(window, 1)->insert(u"ab"_qs);
    EXPECT_EQ(SetTimeWorld::Time(window), "2:00") << "nothing but digits is pasted";
    w.Play(
        "Tab > say: Nastavit | Tab > say: Vybrat datum a čas | Tab > say: Storno | Tab > say: hodin: 2 | "
        "7 > char: 7 | 5 > char: 5 | 3 > char: 3 | 1 > sound: refused.wav");
    EXPECT_EQ(SetTimeWorld::Time(window), "07:53");
    w.Press("Esc");
  });
}

TEST(SetSysTime, ACountdownIsSetCancelledAndRefused) {
  const std::tuple<const char*, const char*, const char*, bool> times[] = {{"00", "", "sound: refused.wav", false},
                                                                           {"0", "75", "sound: refused.wav", false},
                                                                           {"", "1", "say: minutky nastaveny", true},
                                                                           {"", "", "say: minutky zrušeny", false}};
  SetTimeWorld w;
  for (const auto& [hours, minutes, heard, runs] : times) {
    w.Open(Mode::Countdown, [&, hours = hours, minutes = minutes, heard = heard](QWidget* window) {
      SetTimeWorld::SetTime(window, hours, minutes);
      w.Play((std::string("Return > ") + heard).c_str());
      window->close();
    });
    EXPECT_EQ(w.countdown.CountdownRunning, runs);
  }
}

TEST(SetSysTime, TheClockIsSetOrTheRefusalIsTold) {
  const std::tuple<Clock::Outcome, QString, const char*> outcomes[] = {
      {Clock::Outcome::Done, QString(), ""},
      {Clock::Outcome::NotPermitted, u"no"_qs, "K nastavení nemáte oprávnění."},
      {Clock::Outcome::Failed, u"NTP běží"_qs, "NTP běží"}};
  for (const auto& [answer, description, words] : outcomes) {
    SetTimeWorld w;
    w.world.clock.Answer = answer;
    w.world.clock.Description = description;
    std::string told;
    w.Open(Mode::SysTime, [&, refused = answer != Clock::Outcome::Done](QWidget* window) {
      for (const char* wrong : {"", "25"}) {
        SetTimeWorld::SetTime(window, wrong, "5");
        w.Play("Return > sound: refused.wav");
      }
      SetTimeWorld::SetTime(window, "9", "5");
      if (refused) {
        w.Next([&](QWidget* message) {
          EXPECT_EQ(message->property("windowTag").toInt(), 806);
          told = w.Heard();
          w.Press("Return");
        });
      }
      w.Press("Return");
    });
    EXPECT_NE(told.find(words), std::string::npos) << told;
    EXPECT_EQ(w.world.clock.SetTo, QDateTime(QDate(2024, 1, 15), QTime(9, 5)));
  }
}

TEST(SetSysTime, ADelayTakesWhatIsNoTimeAsZeroAndStornoTakesItBack) {
  const std::tuple<const char*, const char*, const char*> delays[] = {
      {"1", "30", "1:30:00"}, {"24", "75", "0:00:00"}, {"", "5", "0:05:00"}};
  SetTimeWorld w;
  for (const auto& [hours, minutes, delay] : delays) {
    w.entry.DelayTimeSet = false;
    w.Open(Mode::Postpone, [&, hours = hours, minutes = minutes](QWidget* window) {
      SetTimeWorld::SetTime(window, hours, minutes);
      w.Press("Return");
    });
    EXPECT_TRUE(w.entry.DelayTimeSet);
    EXPECT_EQ(DateText(w.entry.DelayValue).toStdString(), delay);
  }
  w.Open(Mode::Postpone, [&](QWidget* window) { w.Click(window, "cmdCancel"); });
  EXPECT_FALSE(w.entry.DelayTimeSet || w.entry.TaskTimeCancelled);
  EXPECT_TRUE(w.shifts.isEmpty());
}

TEST(SetSysTime, AChosenDateShiftsTheAlarmAtOnce) {
  for (const bool moved : {true, false}) {
    SetTimeWorld w;
    w.entry.DelayStartText = u"15.1.2024 9:00"_qs;
    w.Open(Mode::Postpone, [&](QWidget* window) {
      w.Next([&](QWidget* picker) {
        EXPECT_EQ(picker->property("windowTag").toInt(), 1717);
        if (moved) w.Press("Down");
        w.Press("Return");
      });
      w.Click(window, "cmdSetDate");
    });
    EXPECT_EQ(w.shifts, moved ? QStringList{u"0,0,16.1.2024 9:00"_qs} : QStringList());
    EXPECT_EQ(w.entry.DelayDateChosen, moved);
    EXPECT_FALSE(w.entry.DelayTimeSet);
  }
}

TEST(SetSysTime, TheTimeOfATaskCompletesItsText) {
  const std::tuple<const char*, const char*, const char*, const char*, bool, bool> tasks[] = {
      {"9", "05", "Return", "15.1.2024 9:05:00", false, false},
      {"", "5", "Return", "15.1.2024 00:5:00", false, false},
      {"", "", "Return", "15.1.2024", false, true},
      {"9", "05", "Esc", "15.1.2024", false, false},
      {"9", "05", "", "", true, false}};
  for (const auto& [hours, minutes, key, text, cancelled, empty] : tasks) {
    SetTimeWorld w;
    w.Open(Mode::Task, [&, hours = hours, minutes = minutes, key = key](QWidget* window) {
      SetTimeWorld::SetTime(window, "24", "0");
      w.Play("Return > sound: refused.wav");
      SetTimeWorld::SetTime(window, hours, minutes);
      *key ? w.Press(key) : w.Click(window, "cmdCancel");
    });
    EXPECT_EQ(w.entry.TaskTimeText.toStdString(), text);
    EXPECT_EQ(w.entry.TaskTimeCancelled, cancelled);
    EXPECT_EQ(w.entry.TaskTimeEmpty, empty);
    EXPECT_FALSE(w.entry.HasEndPreset);
  }
}

TEST(SetSysTime, AnEndBeforeTheStartIsWarnedOfAndAskedAgain) {
  SetTimeWorld w;
  w.Open(Mode::Task, [&](QWidget* window) {
    SetTimeWorld::SetTime(window, "10", "");
    w.Next([&](QWidget* picker) {
      EXPECT_EQ(SetTimeWorld::Time(picker), "10:00");
      w.Press("Up");
      w.Press("Return");
    });
    w.Next([&](QWidget*) {
      EXPECT_NE(w.Heard().find("Čas ukončení je před časem počátku. Upravte tento údaj."), std::string::npos);
      EXPECT_FALSE(w.entry.HasEndPreset);
      w.Press("Return");
    });
    w.Next([&](QWidget*) {
      for (const char* key : {"Down", "Tab", "Down", "Return"}) w.Press(key);
    });
    w.Click(window, "cmdDuration");
    EXPECT_TRUE(w.entry.HasEndPreset);
    EXPECT_EQ(w.entry.EndPreset, At(2024, 1, 15, 11, 0));
    w.Press("Return");
  });
  EXPECT_EQ(w.entry.TaskTimeText.toStdString(), "15.1.2024 10:00:00");
}

}  // namespace
}  // namespace talnik::test
