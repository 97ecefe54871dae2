#include "shell/Paths.h"
#include "support/FakePlatform.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace talnik::test {
namespace {

class PathsTest : public testing::Test {
 protected:
  PathsTest() {
    shell.LocalData = folder.filePath(u"home/.local/share"_qs);
    QDir().mkpath(app + u"talnik"_qs);
  }
  void Write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.write(bytes);
  }
  QByteArray Read(const QString& path) {
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray("(missing)");
  }
  Paths Init() { return InitPaths(shell, app); }

  QTemporaryDir folder;
  FakeShell shell;
  const QString app = folder.filePath(u"app"_qs) + u'/';
};

TEST_F(PathsTest, EverythingLiesInFoldersOfTheUserAlone) {
  const Paths paths = Init();
  const QString data = shell.LocalData + u"/Orvel1/TALNIK"_qs;
  EXPECT_EQ(paths.DataFolder, data);
  EXPECT_EQ(paths.Store, data + u"/talnik.MDB"_qs);
  EXPECT_EQ(paths.Settings, data + u"/talnik.ini"_qs);
  EXPECT_EQ(paths.GgDataSaved, data + u"/GgData_Saved.txt"_qs);
  EXPECT_EQ(paths.SyncAgent, app + u"googleaccess/calendar/CalendarAgent.exe"_qs);
  for (const QString& made : QStringList{shell.LocalData, shell.LocalData + u"/Orvel1"_qs, data, paths.RecordFolder}) {
    ASSERT_TRUE(FolderExists(made)) << made.toStdString();
    EXPECT_FALSE(QFileInfo(made).permissions() & (QFile::ReadGroup | QFile::ReadOther | QFile::ExeOther));
  }
}

TEST_F(PathsTest, TemplatesAreCopiedOnlyWhereNothingLies) {
  for (const char* name : {"talnik.MDB", "talnik.LDB", "Names.dat"}) {
    Write(app + u"talnik/src_"_qs + QString::fromLatin1(name), name);
  }
  QFile::setPermissions(app + u"talnik/src_talnik.MDB"_qs, QFile::ReadOwner);
  const Paths paths = Init();
  EXPECT_EQ(Read(paths.Store), "talnik.MDB");
  EXPECT_EQ(Read(paths.Names), "Names.dat");
  EXPECT_EQ(Read(paths.Alarms), "(missing)");
  EXPECT_TRUE(QFileInfo(paths.Store).permissions() & QFile::WriteOwner)
      << "a read-only template gives a store to write";

  Write(paths.Names, "mine");
  Write(app + u"talnik/src_talnik.LDB"_qs, "newer");
  Init();
  EXPECT_EQ(Read(paths.Names), "mine");
  EXPECT_EQ(Read(paths.StoreLock), "talnik.LDB");
}

TEST_F(PathsTest, AFolderThatCannotBeMadeIsPassedOver) {
  Write(folder.filePath(u"home"_qs), "a file where the folder should be");
  const Paths paths = Init();
  EXPECT_FALSE(FolderExists(paths.DataFolder));
  EXPECT_FALSE(FileExists(paths.Store));
}

}  // namespace
}  // namespace talnik::test
