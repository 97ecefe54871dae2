#include "Places.h"
#include "platform/WholeFile.h"
#include "platform/linux/PrivateFiles.h"
#include "platform/linux/SocketInstance.h"
#include "platform/linux/SocketMailbox.h"
#include "support/FormDriver.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

namespace talnik::test {
namespace {

constexpr uid_t Nobody = 65534;

/// What another user's process meets at a socket.
enum class Met { NoSocket, Silence, Words };

Met AsNobody(const QString& socket) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  socket.toStdString().copy(address.sun_path, sizeof address.sun_path - 1);
  const pid_t child = ::fork();
  if (child == 0) {
    if (::setgid(Nobody) != 0 || ::setuid(Nobody) != 0) ::_exit(9);
    const auto leave = [](Met met) { ::_exit(static_cast<int>(met)); };
    const int end = ::socket(AF_UNIX, SOCK_STREAM, 0);
    if (::connect(end, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) leave(Met::NoSocket);
    if (::send(end, "close\n", 6, MSG_NOSIGNAL) < 0) leave(Met::Silence);
    char word = 0;
    leave(::read(end, &word, 1) > 0 ? Met::Words : Met::Silence);
  }
  int status = 0;
  EXPECT_TRUE(FormDriver::Until([&] { return ::waitpid(child, &status, WNOHANG) == child; }));
  FormDriver::Settle();
  return static_cast<Met>(WEXITSTATUS(status));
}

/// For as long as it lives, new files are open to all.
class OpenMask {
 public:
  OpenMask() : old_(::umask(0)) {}
  ~OpenMask() { ::umask(old_); }
  OpenMask(const OpenMask&) = delete;
  OpenMask& operator=(const OpenMask&) = delete;

 private:
  mode_t old_;
};

class StrangersAtFiles : public testing::Test {
 protected:
  QString In(const char* name) const { return folder_.filePath(QString::fromUtf8(name)); }
  QTemporaryDir folder_;
};

}  // namespace

TEST_F(StrangersAtFiles, AnotherUserIsNotHeardAndHearsNothing) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root can be somebody else";
  QStringList words;
  SocketInstance instance(folder_.path());
  instance.Told = [&words](const QString& word) { words << word; };
  ASSERT_TRUE(instance.Acquire());
  SocketMailbox box(u"callback"_qs, folder_.path());
  box.Changed = [&] { words << box.Text(); };
  box.SetText(u"tajné"_qs);
  ASSERT_TRUE(box.Open());
  for (const QString& socket : {In("talnik.socket"), box.Address()}) {
    EXPECT_EQ(AsNobody(socket), Met::NoSocket) << "the folder is closed";
  }
  ::chmod(QFile::encodeName(folder_.path()), 0755);
  for (const QString& socket : {In("talnik.socket"), box.Address()}) {
    EXPECT_EQ(AsNobody(socket), Met::NoSocket) << "and so is the socket";
    ::chmod(QFile::encodeName(socket), 0777);
    EXPECT_EQ(AsNobody(socket), Met::Silence) << socket.toStdString();
  }
  EXPECT_TRUE(words.isEmpty()) << words.join(u' ').toStdString();
}

TEST_F(StrangersAtFiles, WhatIsMadeIsClosedWhateverTheMask) {
  const OpenMask open;
  WriteFile(In("wide"), "old");
  ASSERT_EQ(ModeOf(In("wide")), 0666);
  EXPECT_TRUE(ReplacePrivateFile(In("wide"), "new") && ReplacePrivateFile(In("a/b/new"), "new"));
  EXPECT_TRUE(QDir(folder_.path()).mkdir(u"run"_qs) && ClaimPrivateFolder(In("run")));
  SocketInstance instance(In("run"));
  SocketMailbox box(u"callback"_qs, In("run"));
  ASSERT_TRUE(instance.Acquire() && box.Open());
  const std::pair<const char*, int> modes[] = {{"wide", 0600},           {"a", 0700},        {"a/b", 0700},
                                               {"a/b/new", 0600},        {"run", 0700},      {"run/talnik.lock", 0600},
                                               {"run/talnik.socket", 0}, {"run/callback", 0}};
  for (const auto& [name, mode] : modes) EXPECT_EQ(ModeOf(In(name)) & (mode ? 0777 : 0077), mode) << name;
}

TEST_F(StrangersAtFiles, ALinkOfOurOwnIsFollowedAndAnothersIsNot) {
  WriteFile(In("target"), "old");
  ASSERT_TRUE(QFile::link(In("target"), In("link")));
  QString reason;
  EXPECT_TRUE(WriteWholeFile(In("link"), "new", Readers::UserAlone, reason)) << reason.toStdString();
  EXPECT_TRUE(QFileInfo(In("link")).isSymLink());
  EXPECT_EQ(ReadFile(In("target")), "new");
  if (::geteuid() != 0) return;
  ASSERT_EQ(::lchown(QFile::encodeName(In("link")), Nobody, Nobody), 0);
  EXPECT_FALSE(WriteWholeFile(In("link"), "planted", Readers::AsUsual, reason));
  EXPECT_EQ(reason, u"Přístup byl odepřen."_qs);
  EXPECT_EQ(ReadFile(In("target")), "new");
}

TEST_F(StrangersAtFiles, OnlyOldTemporariesOfOurOwnAreSwept) {
  struct Case {
    const char* name;
    int hours;
    bool stays;
  };
  const Case cases[] = {{"talnik.ini", 9, true},        {"talnik.ini.AbCdEf", 9, false},
                        {"talnik.ini.AbCdEg", 0, true}, {"talnik.ini.AbCdE", 9, true},
                        {"dopis.AbCdEf", 9, true},      {"talnik.ini.AbCdEf.x", 9, true}};
  for (const Case& test : cases) {
    WriteFile(In(test.name), "x");
    QFile file(In(test.name));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    file.setFileTime(QDateTime::currentDateTime().addSecs(-3600 * test.hours), QFileDevice::FileModificationTime);
  }
  ASSERT_TRUE(QFile::link(In("dopis.AbCdEf"), In("talnik.ini.LinkEd")));
  SweepFolder(folder_.path(), {u"talnik.ini"_qs});
  for (const Case& test : cases) EXPECT_EQ(QFileInfo::exists(In(test.name)), test.stays) << test.name;
  EXPECT_TRUE(QFileInfo(In("talnik.ini.LinkEd")).isSymLink());
}

}  // namespace talnik::test
