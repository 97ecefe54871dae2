#pragma once

#include "platform/Registry.h"

#include <QString>

namespace talnik {

class Dialogs;

/// Shows the file dialog of a kind with the fields of `text`; gives the chosen path, empty when the user gave up.
QString ChooseFile(Dialogs& dialogs, Registry& registry, int kind, const QString& text);

}  // namespace talnik
