#include "Places.h"
#include "platform/linux/EndSignals.h"
#include "platform/linux/SocketInstance.h"
#include "support/FormDriver.h"

#include <QDir>
#include <QFileInfo>
#include <QLocalSocket>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <vector>

namespace talnik::test {

namespace {

class InstanceTest : public ::testing::Test {
 protected:
  QTemporaryDir folder_;
  QString socket_ = folder_.filePath(u"talnik.socket"_qs);

  /// An instance that keeps the words it is told.
  std::unique_ptr<SocketInstance> Make(QStringList& words) {
    auto instance = std::make_unique<SocketInstance>(folder_.path());
    instance->Told = [&words](const QString& word) { words << word; };
    return instance;
  }

  std::unique_ptr<QLocalSocket> Peer(const QByteArray& bytes) {
    auto peer = std::make_unique<QLocalSocket>();
    peer->connectToServer(socket_);
    peer->write(bytes);
    peer->flush();
    return peer;
  }
};

}  // namespace

TEST_F(InstanceTest, TheSecondIsRefusedAndItsWordHeard) {
  QStringList words;
  QStringList none;
  auto first = Make(words);
  auto second = Make(none);
  EXPECT_FALSE(first->Tell(u"show"_qs)) << "nobody listens yet";
  ASSERT_TRUE(first->Acquire());
  EXPECT_TRUE(first->Acquire()) << "it stays the one";
  EXPECT_FALSE(second->Acquire());
  EXPECT_TRUE(second->Tell(u"show"_qs));
  EXPECT_TRUE(second->Tell(u"close"_qs));
  EXPECT_TRUE(words.isEmpty()) << "words come from the event loop";
  EXPECT_TRUE(FormDriver::Until([&] { return words.size() == 2; }));
  EXPECT_EQ(words, QStringList({u"show"_qs, u"close"_qs}));
  EXPECT_EQ(ModeOf(socket_) & 0077, 0) << "for this user alone";
  EXPECT_EQ(ModeOf(folder_.filePath(u"talnik.lock"_qs)), 0600);

  first.reset();
  EXPECT_FALSE(QFileInfo::exists(socket_));
  EXPECT_TRUE(second->Acquire()) << "the place is free again";
}

TEST_F(InstanceTest, WhatAKilledProcessLeftIsTakenOver) {
  int ready[2];
  ASSERT_EQ(::pipe(ready), 0);
  const pid_t child = ::fork();
  if (child == 0) {
    SocketInstance instance(folder_.path());
    const char held = instance.Acquire() ? 'y' : 'n';
    if (::write(ready[1], &held, 1) == 1) ::pause();
    ::_exit(0);
  }
  char held = '?';
  ASSERT_EQ(::read(ready[0], &held, 1), 1);
  ASSERT_EQ(held, 'y');
  QStringList words;
  auto instance = Make(words);
  EXPECT_FALSE(instance->Acquire()) << "while it lives";
  ::kill(child, SIGKILL);
  ::waitpid(child, nullptr, 0);
  ::close(ready[0]);
  ::close(ready[1]);
  ASSERT_TRUE(QFileInfo::exists(socket_));
  EXPECT_FALSE(instance->Tell(u"show"_qs)) << "its socket is deaf";
  ASSERT_TRUE(instance->Acquire() && instance->Tell(u"show"_qs));
  EXPECT_TRUE(FormDriver::Until([&] { return !words.isEmpty(); }));
}

TEST_F(InstanceTest, ADamagedLockFileDoesNotLockTheProgramOut) {
  QStringList words;
  WriteFile(folder_.filePath(u"talnik.lock"_qs), "garbage\0\n");
  WriteFile(socket_, "no socket");
  auto instance = Make(words);
  ASSERT_TRUE(instance->Acquire() && instance->Tell(u"show"_qs));
  EXPECT_TRUE(FormDriver::Until([&] { return !words.isEmpty(); }));
}

TEST_F(InstanceTest, RudePeersAreCutOffAndTheNextWordIsHeard) {
  QStringList words;
  auto instance = Make(words);
  ASSERT_TRUE(instance->Acquire());
  const auto flood = Peer(QByteArray(1 << 16, 'x'));
  const auto unknown = Peer("delete\n");
  const auto noise = Peer(QByteArray("\0\xff\n", 3));
  const auto greedy = Peer("close\nshow\nshow\n");
  const auto blanks = Peer(" show \r\n");
  std::vector<std::unique_ptr<QLocalSocket>> halves;
  for (int i = 0; i < 40; ++i) halves.push_back(Peer("sho"));
  EXPECT_TRUE(FormDriver::Until([&] { return words.size() == 2; }));
  EXPECT_EQ(words, QStringList({u"close"_qs, u"show"_qs})) << "one word a connection";
  for (const auto* peer : {flood.get(), unknown.get(), noise.get(), greedy.get()}) {
    EXPECT_TRUE(FormDriver::Until([&] { return peer->state() == QLocalSocket::UnconnectedState; }));
  }
  EXPECT_TRUE(FormDriver::Until([&] { return halves.front()->state() == QLocalSocket::UnconnectedState; }))
      << "too many who say nothing";
}

TEST(EndSignals, ASignalIsHeardFromTheEventLoop) {
  for (const int number : {SIGTERM, SIGHUP, SIGINT}) {
    int asked = 0;
    const EndSignals signals([&] { ++asked; });
    ::raise(number);
    EXPECT_EQ(asked, 0);
    EXPECT_TRUE(FormDriver::Until([&] { return asked == 1; })) << number;
  }
}

TEST(SocketInstance, WithoutAnyFolderTheProgramRunsUnguarded) {
  const Variable session("XDG_RUNTIME_DIR");
  const Variable temporary("TMPDIR", "/proc/nowhere");
  const Variable data("XDG_DATA_HOME", "/proc/nowhere");
  SocketInstance instance;
  EXPECT_TRUE(instance.Acquire());
  EXPECT_FALSE(instance.Tell(u"show"_qs));
}

}  // namespace talnik::test
