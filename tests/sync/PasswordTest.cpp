#include "platform/linux/LinuxShell.h"
#include "platform/linux/SocketMailbox.h"
#include "support/FakeMailbox.h"
#include "support/FakePlatform.h"
#include "support/FormDriver.h"
#include "support/LogCapture.h"
#include "sync/PasswordHandOver.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace talnik::test {

namespace {

const QString Password = u"žluťoučký kůň 7"_qs;

class PasswordTest : public testing::Test {
 protected:
  PasswordTest() {
    paths.AppFolder = app.path() + u"/"_qs;
    paths.SyncAgent = paths.AppFolder + u"CalendarAgent.exe"_qs;
    paths.DataFolder = data.path();
  }

  QByteArray Request() {
    QFile file(data.filePath(u"GoogleAccess.ini"_qs));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }
  void InstallAgent(const QByteArray& script) {
    QFile::copy(QStringLiteral(SYNC_AGENT), paths.SyncAgent);
    QFile file(paths.AppFolder + u"agent.script"_qs);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(script);
  }

  QTemporaryDir app, data, run, seen;
  FakeWorld world;
  Paths paths;
  FakeMailbox* box = nullptr;
  bool opens = true;
  PasswordHandOver handOver{
      {.paths = paths, .codePage = world.codePage, .shell = world.shell, .mailbox = [this](const QString&) {
         auto made = std::make_unique<FakeMailbox>(box);
         made->Opens = opens;
         return made;
       }}};
  QString reason;
};

}  // namespace

TEST_F(PasswordTest, AnAgentGetsItByTheBoxAndNoFileOrLogLineHoldsIt) {
  const LogCapture log(u"*.debug=true\nqt.*=false"_qs);
  const QString heard = seen.filePath(u"heard"_qs);
  InstallAgent("request " + data.filePath(u"GoogleAccess.ini"_qs).toUtf8() + "\nhear " + heard.toUtf8() +
               "\nsay #Done\n");
  LinuxShell shell;
  PasswordHandOver real(
      {.paths = paths, .codePage = world.codePage, .shell = shell, .mailbox = [this](const QString& name) {
         return std::make_unique<SocketMailbox>(name, run.path());
       }});
  ASSERT_TRUE(real.Give(Password, reason)) << reason.toStdString();
  QFile file(heard);
  EXPECT_TRUE(FormDriver::Until([&] { return file.exists() && file.size() > 0; }));
  EXPECT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_EQ(file.readAll(), Password.toUtf8() + '\n');

  EXPECT_FALSE(LogCapture::Lines().join(u'\n').contains(Password));
  for (const QTemporaryDir* place : {&data, &app, &run}) {
    QDirIterator files(place->path(), QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
      QFile each(files.next());
      EXPECT_TRUE(each.open(QIODevice::ReadOnly));
      EXPECT_FALSE(each.readAll().contains(Password.toUtf8()));
    }
  }
}

TEST_F(PasswordTest, TheRequestNamesTheBoxWhichIsEmptiedWhenItWasTaken) {
  ASSERT_TRUE(handOver.Give(Password, reason));
  EXPECT_EQ(Request(), "[Login]\r\n[Application]\r\nAction = Encrypt\r\nCallBack =  /run/box\r\n");
  EXPECT_TRUE(world.shell.Started.isEmpty()) << "no agent is installed";
  EXPECT_EQ(box->Text(), Password);
  box->Taken();
  EXPECT_EQ(box->Text(), QString());
  ASSERT_TRUE(handOver.Give(u"nové"_qs, reason));
  EXPECT_EQ(box->Text(), u"nové"_qs) << "one box at a time";
  box->Write(u"#Error"_qs);
  EXPECT_EQ(box->Text(), QString());
  handOver.Drop();
  EXPECT_EQ(box, nullptr);
}

TEST_F(PasswordTest, WhatFailsIsToldAndNothingIsLeftBehind) {
  InstallAgent({});
  world.shell.Starts = false;
  EXPECT_FALSE(handOver.Give(Password, reason));
  EXPECT_EQ(reason, u"Nelze spustit převodní aplikaci: "_qs + paths.SyncAgent);
  EXPECT_EQ(box, nullptr);
  paths.DataFolder = data.path() + u"/gone"_qs;
  EXPECT_FALSE(handOver.Give(Password, reason));
  EXPECT_FALSE(reason.isEmpty());
  EXPECT_EQ(box, nullptr);
  opens = false;
  EXPECT_FALSE(handOver.Give(Password, reason));
  EXPECT_EQ(reason, u"Nelze se spojit s převodní aplikací."_qs);
  EXPECT_EQ(box, nullptr);
}

}  // namespace talnik::test
