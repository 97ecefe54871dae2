#pragma once

#include "calendar/frmMain.h"
#include "shell/Speech.h"

namespace talnik {

struct frmMain::Services {
  Services(Platform& platform, const CommonSettings& look, cSetting& setting)
      : speech(platform.voice.get(), *platform.braille, *platform.sound, look.SoundPath(QString())),
        forms{speech, dialogs, *platform.clock, look, setting},
        dialogs(forms) {}

  Speech speech;
  FormServices forms;
  Dialogs dialogs;
};

}  // namespace talnik
