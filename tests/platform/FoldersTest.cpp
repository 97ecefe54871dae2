#include "Places.h"
#include "platform/linux/LinuxShell.h"
#include "platform/linux/PrivateFiles.h"
#include "platform/linux/UserFolders.h"
#include "support/FormDriver.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QUrl>

#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

namespace talnik::test {

TEST(UserFolders, FollowTheEnvironmentElseTheHomeFolder) {
  const Variable home("HOME", "/home/eva/");
  const Variable data("XDG_DATA_HOME");
  const Variable config("XDG_CONFIG_HOME", "relative/does/not/count");
  EXPECT_EQ(DataHome(), u"/home/eva/.local/share"_qs);
  EXPECT_EQ(ConfigHome(), u"/home/eva/.config"_qs);
  const Variable otherData("XDG_DATA_HOME", "/data//");
  const Variable otherConfig("XDG_CONFIG_HOME", "/config");
  EXPECT_EQ(LinuxShell().LocalDataFolder(), u"/data"_qs);
  EXPECT_EQ(ConfigHome(), u"/config"_qs);
  const Variable noHome("HOME");
  EXPECT_EQ(HomeFolder(), QFile::decodeName(getpwuid(geteuid())->pw_dir)) << "the user database knows";
}

TEST(UserFolders, TheRuntimeFolderIsTheUsersOwnAndClosed) {
  const QTemporaryDir runtime;
  const QTemporaryDir temporary;
  const Variable temporaryFolder("TMPDIR", QFile::encodeName(temporary.path()));
  const QString inSession = runtime.filePath(u"talnik"_qs);
  const QString inTemporary = temporary.filePath(u"talnik-"_qs + QString::number(geteuid()));
  {
    const Variable session("XDG_RUNTIME_DIR", QFile::encodeName(runtime.path()));
    ASSERT_TRUE(QDir().mkdir(inSession));
    ASSERT_EQ(::chmod(QFile::encodeName(inSession), 0755), 0);
    EXPECT_EQ(RuntimeFolder(), inSession);
    EXPECT_EQ(ModeOf(inSession), 0700) << "an open one is closed";
    ASSERT_TRUE(QDir().rmdir(inSession));
    ASSERT_TRUE(QFile::link(temporary.path(), inSession));
    EXPECT_EQ(RuntimeFolder(), inTemporary) << "a link could lead anywhere";
  }
  const Variable none("XDG_RUNTIME_DIR");
  ASSERT_TRUE(QDir().rmdir(inTemporary));
  EXPECT_EQ(RuntimeFolder(), inTemporary);
  EXPECT_EQ(ModeOf(inTemporary), 0700);
  ASSERT_TRUE(QDir().rmdir(inTemporary));
  WriteFile(inTemporary, "in the way");
  const Variable data("XDG_DATA_HOME", QFile::encodeName(temporary.filePath(u"data"_qs)));
  EXPECT_EQ(RuntimeFolder(), temporary.filePath(u"data/talnik-run"_qs));
}

TEST(UserFolders, ARuntimeFolderOfAnotherUserIsNotUsed) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can give a folder away";
  const QTemporaryDir runtime;
  const QTemporaryDir temporary;
  const Variable temporaryFolder("TMPDIR", QFile::encodeName(temporary.path()));
  const Variable session("XDG_RUNTIME_DIR", QFile::encodeName(runtime.path()));
  ASSERT_EQ(::chown(QFile::encodeName(runtime.path()), 65534, 65534), 0);
  EXPECT_TRUE(RuntimeFolder().startsWith(temporary.path()));
  const QString claimed = RuntimeFolder();
  ASSERT_EQ(::chown(QFile::encodeName(claimed), 65534, 65534), 0);
  EXPECT_FALSE(ClaimPrivateFolder(claimed));
}

TEST(PrivateFiles, ReplacingIsForTheUserAloneAndAllOrNothing) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(u"a/b/file"_qs);
  ASSERT_TRUE(ReplacePrivateFile(path, "one"));
  EXPECT_EQ(ModeOf(folder.filePath(u"a"_qs)), 0700);
  ASSERT_EQ(::chmod(QFile::encodeName(path), 0644), 0);
  ASSERT_TRUE(ReplacePrivateFile(path, "two"));
  EXPECT_EQ(ReadFile(path), "two");
  EXPECT_EQ(ModeOf(path), 0600);
  EXPECT_FALSE(ReplacePrivateFile(path + u"/below", "three"));

  // A disk that is full.
  rlimit old{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &old), 0);
  const rlimit full{2, old.rlim_max};
  const auto handler = ::signal(SIGXFSZ, SIG_IGN);
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &full), 0);
  EXPECT_FALSE(ReplacePrivateFile(path, "newer"));
  ::setrlimit(RLIMIT_FSIZE, &old);
  ::signal(SIGXFSZ, handler);
  EXPECT_EQ(ReadFile(path), "two");
  EXPECT_EQ(QDir(folder.filePath(u"a/b"_qs)).entryList(QDir::Files | QDir::Hidden), QStringList(u"file"_qs));
}

TEST(LinuxShell, TheInstalledFolderIsBesideTheFolderOfPrograms) {
  const QTemporaryDir folder;
  const LinuxShell shell(folder.filePath(u"usr/bin/talnik"_qs));
  const QString installed = folder.filePath(u"usr/share/talnik/"_qs);
  EXPECT_EQ(shell.InstalledFolder(), installed);
  ASSERT_TRUE(QDir().mkpath(folder.filePath(u"usr/bin/share/talnik"_qs)));
  EXPECT_EQ(shell.InstalledFolder(), folder.filePath(u"usr/bin/share/talnik/"_qs)) << "where the program was built";
  ASSERT_TRUE(QDir().mkpath(installed));
  EXPECT_EQ(shell.InstalledFolder(), installed);
}

TEST(LinuxShell, AutostartIsAnEntryThatTheDesktopMayAlsoSwitchOff) {
  const QTemporaryDir folder;
  const Variable config("XDG_CONFIG_HOME", QFile::encodeName(folder.filePath(u"config"_qs)));
  const QString path = folder.filePath(u"config/autostart/talnik.desktop"_qs);
  LinuxShell shell(u"/opt/můj talník/talnik"_qs);
  EXPECT_FALSE(shell.AutostartIsOn());
  EXPECT_TRUE(shell.AutostartOff()) << "there is nothing to take away";
  QGuiApplication::setDesktopFileName(u"cz.someone.talnik"_qs);
  ASSERT_TRUE(shell.AutostartOn());
  QGuiApplication::setDesktopFileName({});
  EXPECT_TRUE(shell.AutostartIsOn());
  const QByteArray entry = ReadFile(path);
  EXPECT_TRUE(entry.startsWith("[Desktop Entry]\nType=Application\nName=Talník\nIcon=cz.someone.talnik\n"));
  EXPECT_TRUE(entry.endsWith("\nExec=\"/opt/můj talník/talnik\" /h\n"));
  for (const char* off : {"Hidden=true\n", "X-GNOME-Autostart-enabled=false\n"}) {
    WriteFile(path, entry + off);
    EXPECT_FALSE(shell.AutostartIsOn()) << off;
  }
  WriteFile(path, "[Desktop Entry]\nExec=\n");
  EXPECT_FALSE(shell.AutostartIsOn());
  EXPECT_TRUE(shell.AutostartOff());
  EXPECT_FALSE(QFileInfo::exists(path));
  const Variable nowhere("XDG_CONFIG_HOME", "/proc/nowhere");
  EXPECT_FALSE(shell.AutostartOn());
}

TEST(LinuxShell, TellsWhenTheDesktopHasNothingToOpenAPageWith) {
  const QTemporaryDir folder;
  const QString page = folder.filePath(u"nápověda 100%.htm"_qs);
  const QString opener = folder.filePath(u"xdg-open"_qs);
  const QString asked = folder.filePath(u"asked"_qs);
  WriteFile(page, "");
  const Variable path("PATH", QFile::encodeName(folder.path()) + ":/usr/bin:/bin");
  LinuxShell shell;
  EXPECT_FALSE(shell.Open(folder.filePath(u"missing.htm"_qs)));
  int failures[] = {0, 0};
  const int exitCodes[] = {0, 3};
  for (std::size_t i = 0; i < std::size(exitCodes); ++i) {
    WriteFile(opener,
              "#!/bin/sh\necho \"$1\" >> '" + QFile::encodeName(asked) + "'\nexit " + QByteArray::number(exitCodes[i]));
    ASSERT_TRUE(QFile::setPermissions(opener, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    EXPECT_TRUE(shell.Open(page, [&failures, i] { ++failures[i]; }));
    const auto lines = static_cast<qsizetype>(i) + 1;
    EXPECT_TRUE(FormDriver::Until([&] { return ReadFile(asked).count('\n') == lines; }));
  }
  EXPECT_TRUE(FormDriver::Until([&] { return failures[1] == 1; }));
  EXPECT_EQ(failures[0], 0);
  EXPECT_EQ(ReadFile(asked).split('\n').first(), QUrl::fromLocalFile(page).toEncoded());
}

TEST(LinuxShell, ExecWordIsReadBackAsItStands) {
  EXPECT_EQ(ExecWord(u"/a b/50%"_qs), u"\"/a b/50%%\""_qs);
  EXPECT_EQ(ExecWord(u"a\"b`c$d\\e"_qs), u"\"a\\\\\"b\\\\`c\\\\$d\\\\\\\\e\""_qs);
}

}  // namespace talnik::test
