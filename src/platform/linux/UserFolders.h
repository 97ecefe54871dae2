#pragma once

#include <QString>

namespace talnik {

/// The folders of the user, without a separator at the end; empty when the user has none.
QString HomeFolder();
QString DataHome();    ///< $XDG_DATA_HOME, else ".local/share" in the home folder
QString ConfigHome();  ///< $XDG_CONFIG_HOME, else ".config" in the home folder

/// The folder of the running program's sockets and locks: "talnik" in $XDG_RUNTIME_DIR, else one in the folder of
/// temporary files or in the data folder. Made, the user's own and closed to others; empty when none can be had.
QString RuntimeFolder();

}  // namespace talnik
