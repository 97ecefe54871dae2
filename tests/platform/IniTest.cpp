#include "Places.h"
#include "platform/linux/FileRegistry.h"
#include "platform/linux/IniProfile.h"
#include "platform/linux/IniText.h"

#include <QDir>
#include <QFileInfo>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace talnik::test {

namespace {

/// Lines that no reader of settings can make sense of, between good ones.
constexpr char UntidyLines[] =
    "stray=1\r\n"
    "; head\r\n"
    "[Application]\r\n"
    "garbage\r\n"
    "User = jan = novák \r\n"
    "user=second\r\n"
    "=no key\r\n"
    "\r\n"
    "; tail of the section\r\n"
    "[Voice\n"
    "Name=\"Eva\"\r\n"
    "\0\0[APPLICATION]\r\n"
    "AlarmLoop=7\r\n"
    "#remark\r\n"
    "half";
const QByteArray Untidy(UntidyLines, sizeof UntidyLines - 1);

class IniProfileTest : public ::testing::Test {
 protected:
  QTemporaryDir folder_;
  QString path_ = folder_.filePath(u"talnik.ini"_qs);
  IniProfile profile_;

  QString Value(const QString& section, const QString& key) {
    return profile_.Text(path_, section, key).value_or(u"(none)"_qs);
  }
};

}  // namespace

TEST(IniText, AChangeTouchesOnlyTheLinesOfItsKey) {
  const struct {
    const char* what;
    QString before, key, value, after;
  } cases[] = {
      {"the first of two lines", u"[A]\nx=1\nx=2\n"_qs, u"x"_qs, u"3"_qs, u"[A]\nx=3\nx=2\n"_qs},
      {"a new key, behind the last line of its section", u"[A]\r\nx=1\r\nodd\r\n\r\n; next\r\n[B]\r\n"_qs, u"y"_qs,
       u"2"_qs, u"[A]\r\nx=1\r\nodd\r\ny=2\r\n\r\n; next\r\n[B]\r\n"_qs},
      {"a new key in the last of two sections of one name", u"[a]\nx=1\n[B]\n[A]\nz=1\n"_qs, u"y"_qs, u"2"_qs,
       u"[a]\nx=1\n[B]\n[A]\nz=1\ny=2\n"_qs},
      {"a file without a last line end", u"[B]\nx=1"_qs, u"y"_qs, u"2"_qs, u"[B]\nx=1\n\n[A]\ny=2\n"_qs},
      {"the last line without its end", u"[A]\nx=1"_qs, u"x"_qs, u"2"_qs, u"[A]\nx=2"_qs},
      {"nothing yet", QString(), u"x"_qs, u"1"_qs, u"[A]\r\nx=1\r\n"_qs},
      {"a value of several lines", u"[A]\n"_qs, u"x"_qs, u"1\r\n[B]\ny=2"_qs, u"[A]\nx=1 [B] y=2\n"_qs},
  };
  for (const auto& [what, before, key, value, after] : cases) {
    IniText text(before);
    text.Set(u"A"_qs, key, value);
    EXPECT_EQ(text.Text().toStdString(), after.toStdString()) << what;
    EXPECT_EQ(text.Value(u"A"_qs, key), IniText(text.Text()).Value(u"A"_qs, key)) << what;
  }
  // Every line of a key is removed, so that none comes back.
  IniText text(u"[A]\nStartUp=x\n[B]\nStartUp=y\n[a]\nstartup=z\n"_qs);
  EXPECT_TRUE(text.Remove(u"A"_qs, u"StartUp"_qs));
  EXPECT_EQ(text.Text().toStdString(), "[A]\n[B]\nStartUp=y\n[a]\n");
  EXPECT_FALSE(text.Remove(u"A"_qs, u"StartUp"_qs));
}

TEST_F(IniProfileTest, ReadsAnUntidyFileAndKeepsEveryLineThatNoEntryNames) {
  WriteFile(path_, Untidy);
  EXPECT_EQ(Value(u"application"_qs, u"USER"_qs), u"jan = novák"_qs) << "the first line of a key counts";
  EXPECT_EQ(Value(u"Application"_qs, u"AlarmLoop"_qs), u"7"_qs) << "a section may go on later";
  EXPECT_EQ(Value(u"Voice"_qs, u"Name"_qs), u"\"Eva\""_qs) << "values stand as they are, quotes too";
  for (const QString& none : {u"garbage"_qs, u"half"_qs}) EXPECT_EQ(Value(u"Application"_qs, none), u"(none)"_qs);
  EXPECT_TRUE(profile_.SectionExists(path_, u"VOICE"_qs));
  EXPECT_FALSE(profile_.SectionExists(path_, u"Info"_qs));
  ASSERT_TRUE(profile_.Write(path_, {{u"Application"_qs, u"User"_qs, u"eva"_qs}}));
  QByteArray expected = Untidy;
  EXPECT_EQ(ReadFile(path_),
            expected.replace("User = jan = nov\xc3\xa1k ", "User=eva").replace(QByteArray(2, '\0'), ""));
}

TEST_F(IniProfileTest, EntriesAreWrittenInTheirOrderAndReadBackFresh) {
  EXPECT_EQ(Value(u"Application"_qs, u"User"_qs), u"(none)"_qs);
  EXPECT_FALSE(profile_.SectionExists(path_, u"Application"_qs));
  ASSERT_TRUE(profile_.Write(path_, {{u"Application"_qs, u"User"_qs, u"Žofie"_qs},
                                     {u"Application"_qs, u"AlarmLoop"_qs, u"3"_qs},
                                     {u"Application"_qs, u"StartUp"_qs, std::nullopt}}));
  EXPECT_EQ(ReadFile(path_), "[Application]\r\nUser=Žofie\r\nAlarmLoop=3\r\n");
  EXPECT_EQ(ModeOf(path_), 0600);
  WriteFile(path_, "[Application]\r\nUser=Matěj\r\n");
  EXPECT_EQ(Value(u"Application"_qs, u"User"_qs), u"Matěj"_qs) << "changed by another hand, at once and in place";
}

TEST_F(IniProfileTest, AFileOfAnOlderMachineKeepsItsEncoding) {
  WriteFile(path_, "[Application]\r\nUser=\x8eofie\r\nodd=\x81\x98\r\n");
  EXPECT_EQ(Value(u"Application"_qs, u"User"_qs), u"Žofie"_qs);
  ASSERT_TRUE(profile_.Write(path_, {{u"Application"_qs, u"User"_qs, u"Jiří"_qs}}));
  EXPECT_EQ(ReadFile(path_), "[Application]\r\nUser=Ji\xf8\xed\r\nodd=\x81\x98\r\n");
  ASSERT_TRUE(profile_.Write(path_, {{u"Application"_qs, u"User"_qs, u"Ωmega ř"_qs}}));
  EXPECT_EQ(Value(u"Application"_qs, u"User"_qs), u"Ωmega ř"_qs) << "letters it lacks turn the file to UTF-8";
}

TEST_F(IniProfileTest, AValueIsCutAtCharacter1023) {
  for (const auto& [length, end] : {std::pair(1023, ""), {1023, "aaaa"}, {1022, "🙂"}}) {
    WriteFile(path_, "[Application]\nUser=" + QByteArray(length, 'a') + end);
    EXPECT_EQ(Value(u"Application"_qs, u"User"_qs), QString(length, u'a')) << end;
  }
}

TEST_F(IniProfileTest, WhatCannotBeReadIsNotReplaced) {
  const QList<Profile::Entry> entries{{u"A"_qs, u"x"_qs, u"1"_qs}};
  ASSERT_TRUE(QDir().mkdir(path_));
  EXPECT_EQ(Value(u"A"_qs, u"x"_qs), u"(none)"_qs);
  EXPECT_FALSE(profile_.Write(path_, entries));
  EXPECT_TRUE(QFileInfo(path_).isDir());

  const QString pipe = folder_.filePath(u"pipe"_qs);
  ASSERT_EQ(::mkfifo(QFile::encodeName(pipe), 0600), 0);
  EXPECT_FALSE(profile_.Text(pipe, u"A"_qs, u"x"_qs)) << "and does not wait for the pipe's other end";
  EXPECT_FALSE(profile_.Write(pipe, entries));
  EXPECT_FALSE(profile_.Write(u"/proc/talnik/talnik.ini"_qs, entries));
}

TEST_F(IniProfileTest, LargeAndNoisyFilesAreReadOnceAndQuickly) {
  QByteArray noise = "[Application]\nUser=eva\n";
  for (int i = 0; i < 100000; ++i) noise += QByteArray::number(i * 7919) + "\x01\xff[=;\n";
  WriteFile(path_, noise);
  EXPECT_EQ(Value(u"Application"_qs, u"User"_qs), u"eva"_qs);
  ASSERT_TRUE(profile_.Write(path_, {{u"Application"_qs, u"User"_qs, u"jan"_qs}}));
  EXPECT_EQ(ReadFile(path_), noise.replace("User=eva", "User=jan"));
}

TEST(FileRegistry, ReadsTextsAndNumbersWhateverTheCaseOfNames) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(u"registry.ini"_qs);
  WriteFile(path,
            "[software\\quenta\\COMMON1]\n"
            "ForeColor=dword:0000ffff\nBackColor=DWORD:FFFFFFFF\nbroken=dword:xyz\nlong=dword:123456789\n"
            "Path=/opt/rodina\nempty=\n");
  const FileRegistry registry(path);
  const QString key = u"Software\\Quenta\\Common1"_qs;
  const std::pair<QString, QVariant> values[] = {{u"forecolor"_qs, QVariant(65535u)},
                                                 {u"BackColor"_qs, QVariant(0xffffffffu)},
                                                 {u"broken"_qs, QVariant()},
                                                 {u"long"_qs, QVariant()},
                                                 {u"PATH"_qs, QVariant(u"/opt/rodina"_qs)},
                                                 {u"empty"_qs, QVariant(QString())},
                                                 {u"missing"_qs, QVariant()}};
  for (const auto& [name, value] : values) {
    EXPECT_EQ(registry.Value(key, name), value) << name.toStdString();
    EXPECT_EQ(registry.Value(key + u'\\', name), value) << "the key's last backslash says nothing";
  }
  EXPECT_FALSE(registry.Value(u"Software\\Quenta"_qs, u"Path"_qs).isValid());
}

TEST(FileRegistry, WritesForTheUserAloneAndKeepsWhatOthersWrote) {
  const QTemporaryDir folder;
  const Variable config("XDG_CONFIG_HOME", QFile::encodeName(folder.filePath(u"config"_qs)));
  const QString path = folder.filePath(u"config/Quenta/registry.ini"_qs);
  const QString key = u"Software\\Quenta\\Common1"_qs;
  FileRegistry registry;
  ASSERT_TRUE(registry.SetText(key, u"SelectedFile"_qs, u"/home/já/š.wav"_qs));
  EXPECT_EQ(ModeOf(path), 0600);
  EXPECT_EQ(ModeOf(folder.filePath(u"config/Quenta"_qs)), 0700);

  WriteFile(path, "; of a sibling\n[Software\\Sibling]\nx=dword:00000001\n" + ReadFile(path));
  EXPECT_EQ(registry.Value(key, u"SelectedFile"_qs), QVariant(u"/home/já/š.wav"_qs));
  ASSERT_TRUE(registry.SetText(key, u"SelectedFile"_qs, QString()));
  EXPECT_EQ(registry.Value(key, u"SelectedFile"_qs), QVariant(QString()));
  EXPECT_TRUE(registry.Remove(key, u"selectedfile"_qs));
  EXPECT_FALSE(registry.Value(key, u"SelectedFile"_qs).isValid());
  EXPECT_FALSE(FileRegistry(u"/proc/nowhere/registry.ini"_qs).SetText(key, u"x"_qs, u"1"_qs));
  EXPECT_EQ(ReadFile(path), "; of a sibling\n[Software\\Sibling]\nx=dword:00000001\n[Software\\Quenta\\Common1]\r\n");
}

}  // namespace talnik::test
