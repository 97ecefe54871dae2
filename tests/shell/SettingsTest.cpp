#include "shell/CommonSettings.h"
#include "shell/cSetting.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

namespace talnik::test {
namespace {

class CommonSettingsTest : public testing::Test {
 protected:
  CommonSettings With(const char* name, const QVariant& value) {
    registry.Values[u"Software\\Quenta\\Common1|"_qs + QString::fromLatin1(name)] = value;
    return InitCommonSettings(registry, u"/usr/share/talnik/"_qs);
  }
  FakeRegistry registry;
};

TEST_F(CommonSettingsTest, AnEmptyRegistryGivesYellowOnBlackAndTheInstalledFolder) {
  const CommonSettings read = With("unknown", 1);
  const QColor yellow(255, 255, 0);
  const QColor black(0, 0, 0);
  EXPECT_TRUE(read.ForeColor == yellow && read.BackMenuColor == yellow);
  EXPECT_TRUE(read.BackColor == black && read.ForeMenuColor == black);
  EXPECT_EQ(read.MenuSize, 30);
  EXPECT_EQ(read.SoundPath(u"space.wav"_qs), u"/usr/share/talnik/sound/space.wav"_qs);
  EXPECT_EQ(read.HelpViewer, u"/usr/share/talnik/pagetext/pagetext1.exe"_qs);
}

TEST_F(CommonSettingsTest, NumbersAreReadAsTheyAreStored) {
  EXPECT_EQ(With("ForeColor", 0x00804020U).ForeColor, QColor(0x20, 0x40, 0x80)) << "blue is the highest byte";
  EXPECT_EQ(With("BackColor", 0x01804020U).BackColor, QColor(0, 0, 0)) << "no colour: the default stays";
  EXPECT_EQ(With("MenuSize", 0U).MenuSize, 10);
  EXPECT_EQ(With("MenuSize", 0xFFFFFFFFU).MenuSize, 20) << "more than sixteen bits: not read";
}

TEST_F(CommonSettingsTest, TheGenerationGoesToEveryDotOfTheHelpViewersPath) {
  EXPECT_EQ(With("Path", u"D:\\my.app"_qs).HelpViewer, u"D:\\my1.app/pagetext/pagetext1.exe"_qs);
  for (const QString& path : {u"D:\\my.app\\"_qs, u"/opt/qnt/"_qs}) {
    EXPECT_EQ(With("Path", path).FamilyFolderWithSlash(), path);
  }
}

TEST_F(CommonSettingsTest, ValuesAreKeptUnderJoinedKeysAndASelectedFileIsTakenOnce) {
  const QString base = u"Software\\Quenta"_qs;
  const QString sub = u"Talnik\\Set"_qs;
  const QString tick = u"PlayTick"_qs;
  SaveRegistryValue(registry, QString(base + u'\\'), sub, tick, u"1"_qs);
  EXPECT_EQ(GetRegistryValue(registry, base, sub, tick, 0).toString(), u"1"_qs);
  DeleteRegistryValue(registry, QString(base + u'\\' + sub), tick);
  EXPECT_EQ(GetRegistryValue(registry, base, sub, tick, 7).toInt(), 7);
  With("SelectedFile", u"/tmp/a.wav"_qs);
  EXPECT_EQ(TakeSelectedFile(registry), u"/tmp/a.wav"_qs);
  EXPECT_EQ(TakeSelectedFile(registry), QString());
}

class SettingTest : public testing::Test {
 protected:
  void Line(const char* section, const char* key, const QString& text, const QString& path = u"talnik.ini"_qs) {
    profile.Values[path + u'|' + QString::fromLatin1(section) + u'|' + QString::fromLatin1(key)] = text;
  }
  void Init(const QString& secondary = QString()) { setting.Init(u"talnik.ini"_qs, secondary, u"/qnt/"_qs); }
  std::string Written() { return std::exchange(profile.Written, {}).join(u' ').toStdString(); }
  FakeProfile profile;
  FakeShell shell;
  cSetting setting{profile, shell};
};

TEST_F(SettingTest, NumbersAreTheLeadingDigits) {
  const std::pair<const char*, int> cases[] = {{"7", 7},           {"12abc", 12}, {"-3", -3}, {"+4", 4},
                                               {"abc", 0},         {"-", 0},      {"1.9", 1}, {"007", 7},
                                               {"4294967295", -1}, {"5 6", 5},    {"x5", 0},  {"", 3}};
  for (const auto& [text, number] : cases) {
    Line("Application", "AlarmLoop", QString::fromLatin1(text));
    Init();
    EXPECT_EQ(setting.AlarmLoop, number) << text;
  }
  Line("Application", "User", QString(5000, u'a'));
  Line("Voice", "Pith", u"8"_qs);
  Init();
  EXPECT_EQ(setting.User.size(), 1023);
  EXPECT_EQ(setting.Pitch, 8);
}

TEST_F(SettingTest, APresetFileWinsBySectionAsAWhole) {
  Line("Application", "AlarmLoop", u"9"_qs);
  Line("Application", "AutSync", u"15"_qs);
  Line("Voice", "Volume", u"70"_qs);
  Line("Application", "AutSync", u"30"_qs, u"preset.ini"_qs);
  Init(u"preset.ini"_qs);
  EXPECT_EQ(setting.AutSync, 30);
  EXPECT_EQ(setting.AlarmLoop, 3) << "missing in the preset's section: its default, not the other file's value";
  EXPECT_EQ(setting.Volume, 70);
}

TEST_F(SettingTest, ADingPeriodRaisesItsFlagAndLowersNone) {
  Line("Application", "DingPeriod", u"1"_qs);
  Init();
  EXPECT_TRUE(setting.DingHalfHourly);
  for (const int next : {2, 3}) {
    setting.SetDingPeriod(next);
    EXPECT_TRUE(setting.DingQuarterHourly && setting.DingHalfHourly && !setting.DingHourly);
  }
}

TEST_F(SettingTest, StartUpAsksForTheAutostartOnce) {
  Line("Application", "StartUp", u"x"_qs);
  Init();
  EXPECT_TRUE(std::exchange(shell.Autostart, false));
  EXPECT_EQ(Written(), "Application.StartUp=(deleted)");
  Init();
  EXPECT_FALSE(shell.Autostart);
}

TEST_F(SettingTest, TheDefaultsAreSavedInOrderAndNoOtherKeys) {
  Init();
  EXPECT_EQ(Written(), "");
  EXPECT_FALSE(setting.DingHourly || setting.DingHalfHourly || setting.DingQuarterHourly || shell.Autostart);
  EXPECT_TRUE(setting.SaveAppSettings() && setting.SaveVoiceSettings() && setting.SaveGeneralSetting(u"other.ini"_qs));
  const char* const defaults =
      "User= AlarmSndFile=/qnt/sound/alarm.wav TimeOutSndFile=/qnt/sound/timer.wav CopyFromFile=/qnt/sound/start.wav "
      "AlarmLoop=3 AlarmWatch=1 RepeatTimeout=0 AlarmOnNew=1 ExitMode=0 AutSync=0 SourceRule=1 DingPeriod=3 "
      "DingFile=/qnt/sound/clockbeat.wav DayViewFreeTime=0 HotKeyCall=0 "
      "Name=Male Volume=50 Pith=0 Rate=0 TextSize=20";
  QString written = profile.Written.join(u' ');
  EXPECT_EQ(profile.Written.filter(u"Application."_qs).size(), 15);
  EXPECT_EQ(profile.Written.filter(u"Voice."_qs).size(), 4);
  for (const char* section : {"Application.", "Voice.", "Info."}) written.remove(QString::fromLatin1(section));
  EXPECT_EQ(written.toStdString(), defaults);
  EXPECT_TRUE(profile.Text(u"other.ini"_qs, u"Info"_qs, u"TextSize"_qs));
  Written();

  setting.User = u"jana"_qs;
  setting.AlarmLoop = -2;
  setting.InfoTextSize = -18;
  setting.SaveAppSettings();
  EXPECT_TRUE(profile.Written.contains(u"Application.User=jana"_qs));
  EXPECT_TRUE(profile.Written.contains(u"Application.AlarmLoop=-2"_qs));
  Written();
  setting.SaveGeneralSetting(u"other.ini"_qs);
  EXPECT_EQ(Written(), "Info.TextSize=18");
  profile.Refuse = true;
  EXPECT_FALSE(setting.SaveAppSettings());
}

}  // namespace
}  // namespace talnik::test
