#pragma once

#include "platform/Registry.h"

#include <QString>

#include <functional>

namespace talnik {

class Dialogs;

/// Shows the file dialog of a kind with the fields of `text`; gives the chosen path, empty when the user gave up.
/// Where there is no chooser, the commands that need it are disabled.
using FileChooser = std::function<QString(int kind, const QString& text)>;

/// The chooser that opens the program's own file dialogs.
FileChooser ChooseThroughDialogs(Dialogs& dialogs, Registry& registry);

}  // namespace talnik
