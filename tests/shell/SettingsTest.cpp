#include "shell/CommonSettings.h"
#include "shell/cSetting.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

namespace talnik::test {
namespace {

class CommonSettingsTest : public testing::Test {
 protected:
  void Store(const char* name, const QVariant& value) {
    registry.Values[u"Software\\Quenta\\Common1|"_qs + QString::fromLatin1(name)] = value;
  }
  CommonSettings Read() const { return InitCommonSettings(registry, u"/usr/share/talnik/"_qs); }
  FakeRegistry registry;
};

TEST_F(CommonSettingsTest, AnEmptyRegistryGivesYellowOnBlackAndTheInstalledFolder) {
  const CommonSettings read = Read();
  EXPECT_EQ(read.ForeColor, QColor(255, 255, 0));
  EXPECT_EQ(read.BackColor, QColor(0, 0, 0));
  EXPECT_EQ(read.ForeMenuColor, QColor(0, 0, 0));
  EXPECT_EQ(read.BackMenuColor, QColor(255, 255, 0));
  EXPECT_EQ(read.MenuSize, 30);
  EXPECT_EQ(read.SoundPath(u"space.wav"_qs), u"/usr/share/talnik/sound/space.wav"_qs);
  EXPECT_EQ(read.HelpViewer, u"/usr/share/talnik/pagetext/pagetext1.exe"_qs);
}

TEST_F(CommonSettingsTest, ColoursAreStoredWithBlueInTheHighByte) {
  Store("ForeColor", quint32{0x00804020});
  Store("BackColor", quint32{0xFF000000});  // no colour at all: the default stays
  const CommonSettings read = Read();
  EXPECT_EQ(read.ForeColor, QColor(0x20, 0x40, 0x80));
  EXPECT_EQ(read.BackColor, QColor(0, 0, 0));
}

TEST_F(CommonSettingsTest, TheMenuSizeIsKeptInSixteenBits) {
  Store("MenuSize", quint32{0});
  EXPECT_EQ(Read().MenuSize, 10);
  Store("MenuSize", quint32{0xFFFFFFFF});
  EXPECT_EQ(Read().MenuSize, 20);
}

TEST_F(CommonSettingsTest, TheGenerationGoesToEveryDotOfTheHelpViewersPath) {
  Store("Path", u"D:\\my.app"_qs);
  EXPECT_EQ(Read().HelpViewer, u"D:\\my1.app/pagetext/pagetext1.exe"_qs);
  Store("Path", u"D:\\my.app\\"_qs);
  EXPECT_EQ(Read().FamilyFolderWithSlash(), u"D:\\my.app\\"_qs);
  Store("Path", u"/opt/qnt/"_qs);
  EXPECT_EQ(Read().FamilyFolderWithSlash(), u"/opt/qnt/"_qs);
}

TEST_F(CommonSettingsTest, KeyAndSubkeyAreJoinedByOneBackslash) {
  SaveRegistryValue(registry, u"Software\\Quenta\\"_qs, u"Talnik\\Set"_qs, u"PlayTick"_qs, u"1"_qs);
  EXPECT_EQ(GetRegistryValue(registry, u"Software\\Quenta"_qs, u"Talnik\\Set"_qs, u"PlayTick"_qs, 0).toString(),
            u"1"_qs);
  DeleteRegistryValue(registry, u"Software\\Quenta\\Talnik\\Set"_qs, u"PlayTick"_qs);
  EXPECT_EQ(GetRegistryValue(registry, u"Software\\Quenta"_qs, u"Talnik\\Set"_qs, u"PlayTick"_qs, 7).toInt(), 7);
}

TEST_F(CommonSettingsTest, ASelectedFileIsTakenOnce) {
  Store("SelectedFile", u"/tmp/a.wav"_qs);
  EXPECT_EQ(TakeSelectedFile(registry), u"/tmp/a.wav"_qs);
  EXPECT_EQ(TakeSelectedFile(registry), QString());
}

class SettingTest : public testing::Test {
 protected:
  void Line(const char* section, const char* key, const QString& text, const QString& path = u"talnik.ini"_qs) {
    profile.Values[path + u'|' + QString::fromLatin1(section) + u'|' + QString::fromLatin1(key)] = text;
  }
  void Init(const QString& secondary = QString()) { setting.Init(u"talnik.ini"_qs, secondary, u"/qnt/"_qs); }
  FakeProfile profile;
  FakeShell shell;
  cSetting setting{profile, shell};
};

TEST_F(SettingTest, WithoutAFileTheDefaultsHold) {
  Init();
  EXPECT_EQ(setting.InfoTextSize, 20);
  EXPECT_EQ(setting.Style, 2);
  EXPECT_EQ(setting.VoiceName, u"Male"_qs);
  EXPECT_EQ(setting.Volume, 50);
  EXPECT_EQ(setting.AlarmLoop, 3);
  EXPECT_EQ(setting.AlarmWatch, 1);
  EXPECT_EQ(setting.AlarmOnNew, 1);
  EXPECT_EQ(setting.SourceRule, 1);
  EXPECT_EQ(setting.ExitMode, 0);
  EXPECT_EQ(setting.DingPeriod(), 3);
  EXPECT_FALSE(setting.DingHourly || setting.DingHalfHourly || setting.DingQuarterHourly);
  EXPECT_EQ(setting.AlarmSndFile, u"/qnt/sound/alarm.wav"_qs);
  EXPECT_EQ(setting.TimeOutSndFile, u"/qnt/sound/timer.wav"_qs);
  EXPECT_EQ(setting.CopyFromFile, u"/qnt/sound/start.wav"_qs);
  EXPECT_EQ(setting.DingFile, u"/qnt/sound/clockbeat.wav"_qs);
  EXPECT_FALSE(shell.Autostart);
  EXPECT_TRUE(profile.Written.isEmpty());
}

TEST_F(SettingTest, NumbersAreTheLeadingDigits) {
  const struct {
    const char* text;
    int number;
  } cases[] = {{"7", 7},   {"12abc", 12}, {"-3", -3}, {"+4", 4},          {"abc", 0}, {"-", 0},
               {"1.9", 1}, {"007", 7},    {"", 3},    {"4294967295", -1}, {"5 6", 5}, {"x5", 0}};
  for (const auto& row : cases) {
    Line("Application", "AlarmLoop", QString::fromLatin1(row.text));
    Init();
    EXPECT_EQ(setting.AlarmLoop, row.number) << row.text;
  }
}

TEST_F(SettingTest, AValueEndsAfter1023Characters) {
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
  setting.SetDingPeriod(2);
  EXPECT_TRUE(setting.DingQuarterHourly && setting.DingHalfHourly && !setting.DingHourly);
  setting.SetDingPeriod(3);
  EXPECT_TRUE(setting.DingQuarterHourly && setting.DingHalfHourly);
}

TEST_F(SettingTest, StartUpAsksForTheAutostartOnce) {
  Line("Application", "StartUp", u"x"_qs);
  Init();
  EXPECT_TRUE(shell.Autostart);
  EXPECT_EQ(profile.Written, QStringList(u"Application.StartUp=(deleted)"_qs));
  shell.Autostart = false;
  Init();
  EXPECT_FALSE(shell.Autostart);
}

TEST_F(SettingTest, SavingWritesItsKeysInOrderAndNoOthers) {
  Init();
  setting.User = u"jana"_qs;
  setting.AlarmLoop = -2;
  setting.GoogleLog = 5;
  EXPECT_TRUE(setting.SaveAppSettings());
  const QStringList expected = {
      u"Application.User=jana"_qs,
      u"Application.AlarmSndFile=/qnt/sound/alarm.wav"_qs,
      u"Application.TimeOutSndFile=/qnt/sound/timer.wav"_qs,
      u"Application.CopyFromFile=/qnt/sound/start.wav"_qs,
      u"Application.AlarmLoop=-2"_qs,
      u"Application.AlarmWatch=1"_qs,
      u"Application.RepeatTimeout=0"_qs,
      u"Application.AlarmOnNew=1"_qs,
      u"Application.ExitMode=0"_qs,
      u"Application.AutSync=0"_qs,
      u"Application.SourceRule=1"_qs,
      u"Application.DingPeriod=3"_qs,
      u"Application.DingFile=/qnt/sound/clockbeat.wav"_qs,
      u"Application.DayViewFreeTime=0"_qs,
      u"Application.HotKeyCall=0"_qs,
  };
  EXPECT_EQ(profile.Written, expected);
  profile.Written.clear();
  setting.InfoTextSize = -18;
  setting.SaveVoiceSettings();
  setting.SaveGeneralSetting(u"other.ini"_qs);
  EXPECT_EQ(profile.Written.join(u' '),
            u"Voice.Name=Male Voice.Volume=50 Voice.Pith=0 Voice.Rate=0 Info.TextSize=18"_qs);
  EXPECT_TRUE(profile.Text(u"other.ini"_qs, u"Info"_qs, u"TextSize"_qs));
  profile.Refuse = true;
  EXPECT_FALSE(setting.SaveAppSettings());
}

}  // namespace
}  // namespace talnik::test
