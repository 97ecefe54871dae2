#include "shell/ChooseFile.h"

#include "shell/CommonSettings.h"
#include "shell/VoiceDialog.h"

namespace talnik {

QString ChooseFile(Dialogs& dialogs, Registry& registry, int kind, const QString& text) {
  return dialogs.VoiceDialog(MakeCommand(7, kind), text) == 1 ? TakeSelectedFile(registry) : QString();
}

}  // namespace talnik
