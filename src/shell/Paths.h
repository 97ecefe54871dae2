#pragma once

#include "platform/Shell.h"

#include <QString>

namespace talnik {

/// Where every file of the program lies. Folders end without a separator, AppFolder with one.
struct Paths {
  QString AppFolder;
  QString DataFolder;
  QString RecordFolder;
  QString Settings;  ///< talnik.ini
  QString Store;     ///< talnik.MDB
  QString StoreLock;
  QString Names;
  QString Alarms;
  QString HelpPage;
  QString SyncAgent;
  QString LmData, GgData, LmDataSaved, GgDataSaved;
};

/// Computes the paths, makes the folders (for the user alone) and copies the first-run templates that are missing.
/// Failures are passed over: the check of the store tells of what is not there.
Paths InitPaths(const Shell& shell, const QString& appFolder);

bool FileExists(const QString& path);
bool FolderExists(const QString& path);

}  // namespace talnik
