#pragma once

#include "calendar/frmMain.h"
#include "menus/FilePickers.h"
#include "shell/Speech.h"

namespace talnik {

struct frmMain::Services {
  Services(Platform& platform, const CommonSettings& look, cSetting& setting)
      : speech(platform.voice.get(), *platform.braille, *platform.sound, look.SoundPath(QString())),
        forms{speech, dialogs, *platform.clock, look, setting},
        dialogs(forms) {
    dialogs.PickFile = MakeFilePicker(forms, *platform.folders, *platform.registry);
  }

  Speech speech;
  FormServices forms;
  Dialogs dialogs;
};

}  // namespace talnik
