#include "timetools/HourAnnounce.h"
#include "timetools/TimeWorld.h"
#include "timetools/frmDingPeriod.h"

#include <QPushButton>
#include <QRadioButton>

namespace talnik::test {
namespace {

struct AnnounceWorld : TimeWorld {
  bool dingDone = false;

  AnnounceWorld() { setting.DingFile = u"/s/clockbeat.wav"_qs; }

  std::string Tick(int minute, const char* time) {
    AnnounceTick(
        minute, setting, speech, [time] { return QString::fromUtf8(time); }, dingDone);
    return Heard();
  }
};

std::string Struck(int strokes, const std::string& time) {
  std::string heard;
  for (int i = 0; i < strokes; ++i) heard += "stop; sound: clockbeat.wav; ";
  return heard + "say: " + time;
}

TEST(HourAnnounce, StrikesByTheQuarterInItsPeriodOnceAMinute) {
  struct Case {
    int period;
    int minute;
    int strokes;
  };
  for (const Case& test : {Case{0, 0, 4}, Case{0, 30, 0}, Case{1, 0, 4}, Case{1, 30, 2}, Case{1, 15, 0}, Case{2, 0, 4},
                           Case{2, 15, 1}, Case{2, 30, 2}, Case{2, 45, 3}, Case{2, 46, 0}, Case{3, 0, 0}}) {
    AnnounceWorld w;
    w.setting.SetDingPeriod(test.period);
    EXPECT_EQ(w.Tick(test.minute, "12:30:00"), test.strokes ? Struck(test.strokes, "12:30") : "");
    EXPECT_EQ(w.Tick(test.minute, "12:30:01"), "");
    EXPECT_EQ(w.dingDone, test.strokes > 0);
    w.Tick(1, "12:01:00");
    EXPECT_FALSE(w.dingDone);
  }
}

TEST(HourAnnounce, WaitsForTheEndOfSpeechAndSaysFiveCharacters) {
  AnnounceWorld w;
  w.setting.SetDingPeriod(0);
  w.world.voice.Speaking = true;
  EXPECT_EQ(w.Tick(0, "8:00:00"), "");
  EXPECT_FALSE(w.dingDone);
  w.world.voice.Speaking = false;
  EXPECT_EQ(w.Tick(0, "8:00:40"), Struck(4, "8:00:"));
}

TEST(HourAnnounce, ATickDuringTheStrokesDoesNotStrike) {
  AnnounceWorld w;
  w.setting.SetDingPeriod(2);
  int strokes = 0;
  w.world.sound.Played = [&](const QString&) {
    ++strokes;
    AnnounceTick(
        45, w.setting, w.speech, [] { return QString(); }, w.dingDone);
  };
  w.Tick(45, "12:45:00");
  EXPECT_EQ(strokes, 3);
}

TEST(DingPeriod, ShowsAndStoresThePeriodAndTheSound) {
  AnnounceWorld w;
  w.setting.SetDingPeriod(1);
  w.Next([&](QWidget* window) {
    EXPECT_EQ(window->property("windowTag").toInt(), 1714);
    EXPECT_EQ(w.Heard(), "say: Oznamování času; and: Půlhodina");
    EXPECT_FALSE(FormDriver::Find<QPushButton>(window, "cmdBrowse")->isEnabled());
    EXPECT_EQ(w.After(Qt::Key_Down), "say: Čtvrthodina");
    EXPECT_EQ(w.After(Qt::Key_Tab), "say: /s/clockbeat.wav");
    FormDriver::Find<QLineEdit>(window, "Text1")->setText(u"/x.wav"_qs);
    w.driver.Press(Qt::Key_Return);
  });
  frmDingPeriod form(w.services, w.world.registry);
  form.Open();
  EXPECT_FALSE(w.setting.DingHourly || w.setting.DingHalfHourly);
  EXPECT_TRUE(w.setting.DingQuarterHourly);
  EXPECT_EQ(w.setting.DingPeriod(), 2);
  EXPECT_EQ(w.setting.DingFile.toStdString(), "/x.wav");

  w.Next([&](QWidget* window) {
    FormDriver::Find<QRadioButton>(window, "optPeriod(3)")->setChecked(true);
    FormDriver::Find<QPushButton>(window, "cmdCancel")->click();
  });
  form.Open();
  EXPECT_EQ(w.setting.DingPeriod(), 2) << "Storno changes nothing";

  w.Next([&](QWidget* window) {
    FormDriver::Find<QRadioButton>(window, "optPeriod(3)")->setChecked(true);
    w.driver.Press(Qt::Key_Return);
  });
  form.Open();
  EXPECT_EQ(w.setting.DingPeriod(), 3);
  EXPECT_FALSE(w.setting.DingQuarterHourly);
}

TEST(DingPeriod, ASoundIsPickedFromTheFolderOfSounds) {
  AnnounceWorld w;
  w.look.Path = u"/family"_qs;
  QString asked;
  w.dialogs.PickFile = [&](int kind, const QString& text) {
    asked = QString::number(kind) + u' ' + text;
    w.world.registry.SetText(CommonKey(), u"SelectedFile"_qs, u"/family/sound/bell.wav"_qs);
    return 1;
  };
  w.Next([&](QWidget* window) {
    FormDriver::Find<QPushButton>(window, "cmdBrowse")->click();
    EXPECT_EQ(FormDriver::Find<QLineEdit>(window, "Text1")->text().toStdString(), "/family/sound/bell.wav");
    w.driver.Press(Qt::Key_Escape);
  });
  frmDingPeriod form(w.services, w.world.registry);
  form.Open();
  EXPECT_EQ(asked.toStdString(), "14 *.wav||/family/sound|Otevřít");
}

}  // namespace
}  // namespace talnik::test
