#pragma once

#include "platform/Folders.h"
#include "platform/Registry.h"
#include "shell/FormServices.h"
#include "shell/VoiceDialog.h"

namespace talnik {

/// The file dialogs, ready to be set as Dialogs::PickFile. What is handed in must outlive them. The chosen path waits
/// in the registry for TakeSelectedFile.
Dialogs::FilePicker MakeFilePicker(FormServices& services, Folders& folders, Registry& registry);

}  // namespace talnik
