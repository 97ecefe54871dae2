#pragma once

#include "platform/Braille.h"
#include "platform/Clock.h"
#include "platform/CodePage.h"
#include "platform/Folders.h"
#include "platform/Instance.h"
#include "platform/KeyboardHook.h"
#include "platform/Mailbox.h"
#include "platform/Profile.h"
#include "platform/Recorder.h"
#include "platform/Registry.h"
#include "platform/Shell.h"
#include "platform/Sound.h"
#include "platform/TimeZone.h"
#include "platform/TrayIcon.h"
#include "platform/Voice.h"

#include <functional>
#include <memory>

namespace talnik {

/// All that the program asks of the outside world, chosen in one place at the start.
struct Platform {
  std::unique_ptr<Voice> voice;  ///< empty when there is no speech component
  std::unique_ptr<Braille> braille;
  std::unique_ptr<Sound> sound;
  std::unique_ptr<Recorder> recorder;
  std::unique_ptr<Clock> clock;
  std::unique_ptr<TimeZone> timeZone;
  std::unique_ptr<Registry> registry;
  std::unique_ptr<Profile> profile;
  std::unique_ptr<Shell> shell;
  std::unique_ptr<TrayIcon> trayIcon;
  std::unique_ptr<KeyboardHook> keyboardHook;
  std::unique_ptr<Instance> instance;
  std::unique_ptr<CodePage> codePage;
  std::unique_ptr<Folders> folders;
  std::function<std::unique_ptr<Mailbox>(const QString& name)> mailbox;  ///< makes one, not yet open
};

}  // namespace talnik
