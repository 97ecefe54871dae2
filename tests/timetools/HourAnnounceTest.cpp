#include "timetools/HourAnnounce.h"
#include "timetools/TimeWorld.h"
#include "timetools/frmDingPeriod.h"

#include <tuple>

namespace talnik::test {
namespace {

struct AnnounceWorld : TimeWorld {
  bool dingDone = false;

  explicit AnnounceWorld(int period) {
    setting.DingFile = u"/s/clockbeat.wav"_qs;
    setting.SetDingPeriod(period);
  }

  std::string Tick(int minute, const char* time) {
    AnnounceTick(
        minute, setting, speech, [time] { return QString::fromUtf8(time); }, dingDone);
    return Heard();
  }
};

std::string Struck(int strokes, const std::string& time) {
  std::string heard;
  for (int i = 0; i < strokes; ++i) heard += "stop; sound: clockbeat.wav; ";
  return strokes ? heard + "say: " + time : heard;
}

TEST(HourAnnounce, StrikesByTheQuarterInItsPeriodOnceAMinute) {
  const std::tuple<int, int, int> moments[] = {{0, 0, 4},  {0, 30, 0}, {1, 0, 4},  {1, 30, 2}, {1, 15, 0}, {2, 0, 4},
                                               {2, 15, 1}, {2, 30, 2}, {2, 45, 3}, {2, 46, 0}, {3, 0, 0}};
  for (const auto& [period, minute, strokes] : moments) {
    AnnounceWorld w(period);
    EXPECT_EQ(w.Tick(minute, "12:30:00"), Struck(strokes, "12:30"));
    EXPECT_EQ(w.Tick(minute, "12:30:01"), "");
    EXPECT_EQ(w.dingDone, strokes > 0);
    w.Tick(1, "12:01:00");
    EXPECT_FALSE(w.dingDone);
  }
}

TEST(HourAnnounce, WaitsForTheEndOfSpeechAndSaysFiveCharacters) {
  AnnounceWorld w(0);
  w.world.voice.Speaking = true;
  EXPECT_EQ(w.Tick(0, "8:00:00"), "");
  EXPECT_FALSE(w.dingDone);
  w.world.voice.Speaking = false;
  EXPECT_EQ(w.Tick(0, "8:00:40"), Struck(4, "8:00:"));
}

TEST(HourAnnounce, ATickDuringTheStrokesDoesNotStrike) {
  AnnounceWorld w(2);
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
  AnnounceWorld w(1);
  w.Next([&](QWidget* window) {
    EXPECT_EQ(w.Heard(), "say: Oznamování času; and: Půlhodina");
    EXPECT_FALSE(FormDriver::Find<QAbstractButton>(window, "cmdBrowse")->isEnabled()) << "there is no file dialog";
    w.Play(
        "Up > say: Hodina | Up > sound: end.wav | Down > say: Půlhodina | Down > say: Čtvrthodina | Space > say: "
        "Čtvrthodina | "
        "Tab > say: /s/clockbeat.wav");
    FormDriver::Find<QLineEdit>(window, "Text1")->setText(u"/x.wav"_qs);
    w.Press("Return");
  });
  frmDingPeriod form(w.services, w.world.registry);
  form.Open();
  EXPECT_FALSE(w.setting.DingHourly || w.setting.DingHalfHourly);
  EXPECT_TRUE(w.setting.DingQuarterHourly);
  EXPECT_EQ(w.setting.DingFile.toStdString(), "/x.wav");

  for (const auto& [button, period] : {std::pair("cmdCancel", 2), std::pair("cmdOK", 3)}) {
    w.Next([&, button = button](QWidget* window) {
      w.Click(window, "optPeriod(3)");
      w.Click(window, button);
    });
    form.Open();
    EXPECT_EQ(w.setting.DingPeriod(), period);
    EXPECT_EQ(w.setting.DingQuarterHourly, period == 2);
  }
}

}  // namespace
}  // namespace talnik::test
