#include "Places.h"
#include "platform/linux/FolderReader.h"
#include "platform/linux/MountPoints.h"
#include "support/FormDriver.h"

#include <QApplication>
#include <QDir>
#include <QTimer>
#include <QTimerEvent>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <future>
#include <map>
#include <optional>

namespace talnik::test {

namespace {

using Outcome = Folders::Outcome;

TEST(FolderReader, TellsWhatLiesAtAPath) {
  const QTemporaryDir folder;
  const QString path = folder.path();
  ASSERT_TRUE(QDir(path).mkpath(u"sub/deep"_qs));
  WriteFile(path + u"/dům.txt"_qs, "x");
  WriteFile(path + u"/.hidden"_qs, "x");
  const auto at = [&path](const char* name) { return QFile::encodeName(path + u'/' + QString::fromUtf8(name)); };
  ASSERT_EQ(::symlink("sub", at("link")), 0);
  ASSERT_EQ(::symlink("dům.txt", at("alias")), 0);
  ASSERT_EQ(::symlink("nowhere", at("broken")), 0);
  ASSERT_EQ(::mkfifo(at("pipe"), 0600), 0);
  const int bad = ::open(at("").append("\xff\xfe").constData(), O_CREAT | O_WRONLY, 0600);
  ASSERT_GE(bad, 0);
  ::close(bad);

  const Folders::Answer answer = ReadFolder(path);
  EXPECT_EQ(answer.outcome, Outcome::Folder);
  std::map<std::string, std::string> kinds;
  for (const auto& entry : answer.entries)
    kinds[entry.name.toStdString()] = std::string(entry.isFolder ? "folder" : "file") + (entry.isLink ? " link" : "");
  const std::map<std::string, std::string> expected{{"dům.txt", "file"},
                                                    {"sub", "folder"},
                                                    {"link", "folder link"},
                                                    {"alias", "file link"},
                                                    {"\uFFFD\uFFFD", "file"}};
  EXPECT_EQ(kinds, expected);
  // The folder's own remover could not name it.
  ::unlink(at("").append("\xff\xfe").constData());

  const std::pair<QString, Outcome> outcomes[] = {{path + u"/dům.txt"_qs, Outcome::File},
                                                  {path + u"/nic"_qs, Outcome::Missing},
                                                  {path + u"/broken"_qs, Outcome::Missing},
                                                  {path + u"/nic/nic"_qs, Outcome::NoFolder},
                                                  {path + u"/dům.txt/x"_qs, Outcome::NoFolder},
                                                  {path + u"/pipe"_qs, Outcome::Refused},
                                                  {path + u'/' + QString(300, u'x'), Outcome::Refused},
                                                  {QString(u'/') + QChar::Null, Outcome::Refused},
                                                  {QString(), Outcome::Refused},
                                                  {u"/nic"_qs, Outcome::Missing},
                                                  {path + u"/link/deep"_qs, Outcome::Folder}};
  for (const auto& [name, outcome] : outcomes) EXPECT_EQ(ReadFolder(name).outcome, outcome) << name.toStdString();
  EXPECT_TRUE(ReadFolder(u"/proc/self"_qs).isInvented);
  EXPECT_FALSE(answer.isInvented);
}

TEST(FolderReader, AnswersTheNewestOnlyAndFromTheEventLoop) {
  QStringList answers;
  {
    FolderReader reader;
    const auto ask = [&](const char* path) {
      reader.Read(QString::fromLatin1(path), [&answers, path](const Folders::Answer& answer) {
        answers << QString::fromLatin1(path) + (answer.outcome == Outcome::Folder ? u" read"_qs : u" not"_qs);
      });
    };
    for (const char* path : {"/proc", "/usr", "/no/such/folder", "/"}) ask(path);
    EXPECT_TRUE(answers.isEmpty());
    EXPECT_TRUE(FormDriver::Until([&] { return !answers.isEmpty(); }));
    FormDriver::Settle();
    EXPECT_EQ(answers.join(u';').toStdString(), "/ read");
    ask("/usr");
  }
  FormDriver::Settle();
  EXPECT_EQ(answers.size(), 1) << "a reader that is gone answers nobody";
}

TEST(FolderReader, WhatHangsIsLeftBehind) {
  std::promise<void> networkIsBack;
  const std::shared_future<void> back = networkIsBack.get_future().share();
  std::optional<Outcome> outcome;
  FolderReader reader([back](const QString& path) {
    if (path == u"/hung"_qs) back.wait();
    return ReadFolder(path);
  });
  const auto ask = [&](const QString& path) {
    outcome.reset();
    reader.Read(path, [&](const Folders::Answer& answer) { outcome = answer.outcome; });
  };
  const auto answer = [&] { return FormDriver::Until([&] { return outcome.has_value(); }) ? outcome : std::nullopt; };
  ask(u"/hung"_qs);
  auto* patience = reader.findChild<QTimer*>();
  QTimerEvent end(patience->timerId());
  QApplication::sendEvent(patience, &end);
  EXPECT_EQ(outcome, Outcome::NoAnswer);
  ask(u"/hung"_qs);
  ask(u"/usr"_qs);
  EXPECT_EQ(answer(), Outcome::Folder) << "others can be read meanwhile";
  for (int i = 0; i < 6; ++i) ask(u"/hung"_qs);
  ask(u"/usr"_qs);
  EXPECT_EQ(answer(), Outcome::NoAnswer) << "threads are not left behind without end";
  networkIsBack.set_value();
  EXPECT_TRUE(FormDriver::Until([&] {
    ask(u"/usr"_qs);
    return answer() == Outcome::Folder;
  }));
}

TEST(MountPoints, AreThoseThatHoldFilesOfTheUser) {
  const QByteArray table =
      "21 1 8:1 / / rw shared:1 - ext4 /dev/sda1 rw\n"
      "22 21 0:20 / /proc rw - proc proc rw\n"
      "23 21 8:2 / /boot/efi rw - vfat /dev/sda2 rw\n"
      "24 21 8:17 / /media/eva/M\\303\\241\\040disk rw,nosuid shared:9 master:2 - vfat /dev/sdb1 rw\n"
      "25 21 0:50 / /home/eva/síť rw - fuse.sshfs eva@dům:/ rw\n"
      "26 21 0:51 / /srv/data rw - nfs4 server:/data rw\n"
      "27 21 8:33 / /home rw - ext4 /dev/sdc1 rw\n"
      "28 21 0:52 / /mnt/ram rw - tmpfs tmpfs rw\n"
      "29 21 0:53 / /tmp rw - tmpfs tmpfs rw\n"
      "30 21 8:33 / /etc/hosts rw - ext4 /dev/sdc1 rw\n"
      "31 21 8:33 / /home rw - ext4 /dev/sdc1 rw\n"
      "damaged line\n"
      "32 21 8:33 / /half rw -\n";
  QStringList places;
  for (const Folders::Place& place : MountPoints(table))
    places << (place.kind == Folders::Place::Kind::Network ? u"net "_qs : u"disk "_qs) + place.path;
  EXPECT_EQ(places.join(u';').toStdString(),
            "disk /media/eva/Má disk;net /home/eva/síť;net /srv/data;disk /home;disk /mnt/ram");
  EXPECT_TRUE(MountPoints({}).isEmpty());
}

}  // namespace
}  // namespace talnik::test
