#pragma once

#include <QString>

namespace talnik {

/// The folders of the user, without a separator at the end; empty when the user has none.
QString HomeFolder();
QString DataHome();    ///< $XDG_DATA_HOME, else ".local/share" in the home folder
QString ConfigHome();  ///< $XDG_CONFIG_HOME, else ".config" in the home folder

/// Makes the folder and its parents for the user alone; what exists stays as it is. False when it is not there then.
bool MakePrivateFolder(const QString& path);

/// True when the folder is the user's own, no link, and closed to all others.
bool IsPrivateFolder(const QString& path);

/// The folder of the running programs' sockets and locks, "talnik" in $XDG_RUNTIME_DIR, else one in the folder of
/// temporary files or in the data folder. Made and closed to others; empty when none can be had.
QString RuntimeFolder();

}  // namespace talnik
