#include "platform/Places.h"
#include "shell/Paths.h"
#include "support/FakePlatform.h"

#include <QDir>

#include <gtest/gtest.h>

namespace talnik::test {
namespace {

class PathsTest : public testing::Test {
 protected:
  PathsTest() {
    shell.LocalData = folder.filePath(u"home/.local/share"_qs);
    QDir().mkpath(app + u"talnik"_qs);
  }
  Paths Init() { return InitPaths(shell, app); }
  void Template(const char* name, const QByteArray& bytes) {
    WriteFile(app + u"talnik/src_"_qs + QString::fromLatin1(name), bytes);
  }

  QTemporaryDir folder;
  FakeShell shell;
  const QString app = folder.filePath(u"app"_qs) + u'/';
};

TEST_F(PathsTest, WhatIsThereIsClosedToOthersAndNoLinkFollowed) {
  Template("Names.dat", "names");
  const QString data = shell.LocalData + u"/Orvel1/TALNIK/"_qs;
  const QString outside = folder.filePath(u"outside"_qs);
  QDir().mkpath(data);
  for (const QString& path : {QString(data + u"talnik.MDB"_qs), outside}) {
    WriteFile(path, "old");
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther);
  }
  QFile::link(outside, data + u"talnik.ini"_qs);
  QFile::link(folder.filePath(u"nowhere"_qs), data + u"Names.dat"_qs);
  Init();
  EXPECT_EQ(QFileInfo(data + u"talnik.MDB"_qs).permission(QFile::ReadOther), false);
  EXPECT_EQ(QFileInfo(outside).permission(QFile::ReadOther), true);
  EXPECT_FALSE(QFileInfo::exists(folder.filePath(u"nowhere"_qs))) << "nothing is made where a link leads nowhere";
}

TEST_F(PathsTest, EverythingLiesInFoldersOfTheUserAlone) {
  const Paths paths = Init();
  const QString data = shell.LocalData + u"/Orvel1/TALNIK"_qs;
  const QStringList inData = {paths.RecordFolder, paths.Settings, paths.Store,  paths.StoreLock,   paths.Names,
                              paths.Alarms,       paths.LmData,   paths.GgData, paths.LmDataSaved, paths.GgDataSaved};
  EXPECT_EQ(QString(inData.join(u' ')).replace(data + u'/', QString()).toStdString(),
            "Record talnik.ini talnik.MDB talnik.LDB Names.dat alarms.dat LmData.txt GgData.txt LmData_Saved.txt "
            "GgData_Saved.txt");
  EXPECT_EQ(paths.HelpPage, app + u"help/lumora/talnik.htm"_qs);
  EXPECT_EQ(paths.SyncAgent, app + u"googleaccess/calendar/CalendarAgent.exe"_qs);
  for (const QString& made : {shell.LocalData, QString(shell.LocalData + u"/Orvel1"_qs), data, paths.RecordFolder}) {
    EXPECT_EQ(ModeOf(made), 0700) << made.toStdString();
  }
}

TEST_F(PathsTest, TemplatesAreCopiedOnlyWhereNothingLies) {
  for (const char* name : {"talnik.MDB", "talnik.LDB", "Names.dat"}) Template(name, name);
  QFile::setPermissions(app + u"talnik/src_talnik.MDB"_qs, QFile::ReadOwner);
  const Paths paths = Init();
  EXPECT_EQ(ReadFile(paths.Store), "talnik.MDB");
  EXPECT_EQ(ModeOf(paths.Store), 0600) << "a read-only template gives a store to write";
  EXPECT_EQ(ReadFile(paths.Names), "Names.dat");
  EXPECT_EQ(ReadFile(paths.Alarms), "(missing)");

  WriteFile(paths.Names, "mine");
  Template("talnik.LDB", "newer");
  Init();
  EXPECT_EQ(ReadFile(paths.Names), "mine");
  EXPECT_EQ(ReadFile(paths.StoreLock), "talnik.LDB");
}

TEST_F(PathsTest, AFolderThatCannotBeMadeIsPassedOver) {
  WriteFile(folder.filePath(u"home"_qs), "a file where the folder should be");
  EXPECT_FALSE(FolderExists(Init().DataFolder));
}

}  // namespace
}  // namespace talnik::test
