#include "platform/linux/SocketMailbox.h"

#include <QFile>
#include <QLocalSocket>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace talnik::test {

namespace {

class TheMailbox : public testing::Test {
 protected:
  void SetUp() override {
    box.Changed = [this] { taken << box.Text(); };
    ASSERT_TRUE(box.Open());
  }

  /// A peer that has written `bytes`.
  std::unique_ptr<QLocalSocket> Peer(const QByteArray& bytes) {
    auto peer = std::make_unique<QLocalSocket>();
    peer->connectToServer(box.Address());
    peer->write(bytes);
    peer->flush();
    return peer;
  }

  QTemporaryDir folder;
  SocketMailbox box{u"callback"_qs, folder.path()};
  QStringList taken;
};

}  // namespace

TEST_F(TheMailbox, SendsItsTextAndTakesEachLine) {
  box.SetText(u"žlutý"_qs);
  const auto peer = Peer("%1;3\nhalf a li");
  EXPECT_TRUE(QTest::qWaitFor([&] { return peer->canReadLine() && taken.size() == 1; }));
  EXPECT_EQ(peer->readLine(), "žlutý\n");
  peer->write("ne\r\n\n");
  EXPECT_TRUE(QTest::qWaitFor([&] { return taken.size() == 3; }));
  EXPECT_EQ(taken, QStringList({u"%1;3"_qs, u"half a line"_qs, QString()}));
}

TEST_F(TheMailbox, WhatADyingPeerLeavesByHalfIsNothing) {
  Peer("#Done\n#Err");
  EXPECT_TRUE(QTest::qWaitFor([&] { return !taken.isEmpty(); }));
  Peer("next\n");
  EXPECT_TRUE(QTest::qWaitFor([&] { return taken.size() > 1; }));
  EXPECT_EQ(taken, QStringList({u"#Done"_qs, u"next"_qs}));
}

TEST_F(TheMailbox, AFloodIsTakenAndALineWithoutEndIsNot) {
  const auto endless = Peer(QByteArray(1 << 20, 'x'));
  const auto flood = Peer(QByteArray("%1;2\n").repeated(20000));
  EXPECT_TRUE(QTest::qWaitFor([&] { return taken.size() == 20000; }, 20000));
  EXPECT_TRUE(QTest::qWaitFor([&] { return endless->state() == QLocalSocket::UnconnectedState; }));
  EXPECT_EQ(taken.count(u"%1;2"_qs), 20000);
}

TEST_F(TheMailbox, IsOfThisUserAloneAndTakesOverAStaleSocket) {
  EXPECT_EQ(
      QFile::permissions(box.Address()) & (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther),
      QFile::Permissions());
  SocketMailbox next(u"callback"_qs, folder.path());
  EXPECT_TRUE(next.Open());
  box.Close();
  EXPECT_FALSE(SocketMailbox(QString(200, u'n'), folder.path()).Open()) << "longer than a socket's path may be";
}

TEST_F(TheMailbox, CanBeClosedByWhatALineSetsOff) {
  box.Changed = [this] {
    taken << box.Text();
    box.Close();
  };
  const auto peer = Peer("#Done\nmore\nmore\n");
  EXPECT_TRUE(QTest::qWaitFor([&] { return peer->state() == QLocalSocket::UnconnectedState; }));
  EXPECT_EQ(taken, QStringList(u"#Done"_qs));
}

}  // namespace talnik::test
