#include "shell/Paths.h"

#include "platform/WholeFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace talnik {
namespace {

constexpr QFile::Permissions OnlyUserFolder = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
constexpr QFile::Permissions OnlyUserFile = QFile::ReadOwner | QFile::WriteOwner;

/// Makes a folder and those above it, for the user alone. A folder that is there stays as it is.
void MakeFolder(const QString& path) {
  if (path.isEmpty() || FolderExists(path)) return;
  MakeFolder(QFileInfo(path).path());
  QDir().mkdir(path, OnlyUserFolder);
}

void CopyTemplate(const QString& source, const QString& target) {
  // A pipe in its place would keep us waiting. A link that leads nowhere is not a place to write to.
  const QFileInfo there(target);
  if (there.exists() || there.isSymLink() || !FileExists(source) || !QFile::copy(source, target)) return;
  // An installed template may be read-only for everybody; the user's copy must take writes.
  QFile::setPermissions(target, OnlyUserFile);
}

/// All that is replaced as a whole in the data folder and its backups.
const QStringList& DataFiles() {
  static const QStringList names = {u"talnik.ini"_qs,       u"Names.dat"_qs,        u"LmData.txt"_qs,
                                    u"GgData.txt"_qs,       u"LmData_Saved.txt"_qs, u"GgData_Saved.txt"_qs,
                                    u"GoogleAccess.ini"_qs, u"LmData.log"_qs,       u"talnik.MDB"_qs};
  return names;
}

/// A file that came back from a backup may be open to everybody. What a link leads to is not ours to change.
void CloseToOthers(const QString& path) {
  constexpr QFile::Permissions others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
  const QFileInfo file(path);
  if (file.isFile() && !file.isSymLink() && (file.permissions() & others)) {
    QFile::setPermissions(path, OnlyUserFile);
  }
}

}  // namespace

bool FileExists(const QString& path) {
  return QFileInfo(path).isFile();
}

bool FolderExists(const QString& path) {
  return QFileInfo(path).isDir();
}

Paths InitPaths(const Shell& shell, const QString& appFolder) {
  const QString data = shell.LocalDataFolder() + u"/Orvel1/TALNIK"_qs;
  const auto inData = [&data](const QString& name) -> QString { return data + u'/' + name; };
  Paths paths;
  paths.AppFolder = appFolder;
  paths.DataFolder = data;
  paths.RecordFolder = inData(u"Record"_qs);
  paths.Settings = inData(u"talnik.ini"_qs);
  paths.Store = inData(u"talnik.MDB"_qs);
  paths.StoreLock = inData(u"talnik.LDB"_qs);
  paths.Names = inData(u"Names.dat"_qs);
  paths.Alarms = inData(u"alarms.dat"_qs);
  paths.HelpPage = appFolder + u"help/lumora/talnik.htm"_qs;
  paths.SyncAgent = appFolder + u"googleaccess/calendar/CalendarAgent.exe"_qs;
  paths.LmData = inData(u"LmData.txt"_qs);
  paths.GgData = inData(u"GgData.txt"_qs);
  paths.LmDataSaved = inData(u"LmData_Saved.txt"_qs);
  paths.GgDataSaved = inData(u"GgData_Saved.txt"_qs);

  MakeFolder(paths.RecordFolder);
  for (const QString& folder : {data, inData(u"SYNCBACKUP"_qs)}) {
    SweepFolder(folder, DataFiles());
    for (const QString& name : DataFiles()) CloseToOthers(folder + u'/' + name);
  }
  const QString templates = appFolder + u"talnik/src_"_qs;
  CopyTemplate(templates + u"talnik.MDB"_qs, paths.Store);
  CopyTemplate(templates + u"talnik.LDB"_qs, paths.StoreLock);
  CopyTemplate(templates + u"Names.dat"_qs, paths.Names);
  CopyTemplate(templates + u"alarms.dat"_qs, paths.Alarms);
  return paths;
}

}  // namespace talnik
