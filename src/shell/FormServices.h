#pragma once

#include "platform/Clock.h"
#include "shell/CommonSettings.h"
#include "shell/Speech.h"

namespace talnik {

class Dialogs;
class cSetting;

/// What every window needs; made once by the main window and handed on by reference.
struct FormServices {
  Speech& speech;
  Dialogs& dialogs;
  Clock& clock;
  const CommonSettings& look;
  cSetting& setting;
};

}  // namespace talnik
