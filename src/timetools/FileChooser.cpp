#include "timetools/FileChooser.h"

#include "shell/CommonSettings.h"
#include "shell/VoiceDialog.h"

namespace talnik {

FileChooser ChooseThroughDialogs(Dialogs& dialogs, Registry& registry) {
  return [&dialogs, &registry](int kind, const QString& text) {
    return dialogs.VoiceDialog(MakeCommand(7, kind), text) == 1 ? TakeSelectedFile(registry) : QString();
  };
}

}  // namespace talnik
