#include "platform/linux/MakePlatform.h"

#include "platform/linux/BrlapiBraille.h"
#include "platform/linux/FileRegistry.h"
#include "platform/linux/FolderReader.h"
#include "platform/linux/IniProfile.h"
#include "platform/linux/LinuxShell.h"
#include "platform/linux/LocaleCodePage.h"
#include "platform/linux/OneVoice.h"
#include "platform/linux/PulseRecorder.h"
#include "platform/linux/PulseSound.h"
#include "platform/linux/QtTrayIcon.h"
#include "platform/linux/ReaderBus.h"
#include "platform/linux/ReaderFocus.h"
#include "platform/linux/ReaderVoice.h"
#include "platform/linux/ReaderWatch.h"
#include "platform/linux/SocketInstance.h"
#include "platform/linux/SocketMailbox.h"
#include "platform/linux/SpeechdVoice.h"
#include "platform/linux/SystemClock.h"
#include "platform/linux/SystemTimeZone.h"
#include "platform/linux/XcbKeyboardHook.h"
#include "platform/none/None.h"

namespace talnik {

namespace {

/// The real thing, unless the environment says "none".
template <class Interface, class Real, class None>
std::unique_ptr<Interface> Choose(const char* variable) {
  if (qgetenv(variable) == "none") return std::make_unique<None>();
  return std::make_unique<Real>();
}

}  // namespace

Platform MakePlatform() {
  Platform platform;
  platform.voice = std::make_unique<OneVoice>(Choose<Voice, SpeechdVoice, NoneVoice>("TALNIK_VOICE"),
                                              std::make_unique<ReaderVoice>(LookAtFocus, TellReader),
                                              std::make_unique<ReaderWatch>(QDBusConnection::sessionBus()));
  platform.braille = Choose<Braille, BrlapiBraille, NoneBraille>("TALNIK_BRAILLE");
  platform.sound = Choose<Sound, PulseSound, NoneSound>("TALNIK_SOUND");
  platform.recorder = Choose<Recorder, PulseRecorder, NoneRecorder>("TALNIK_SOUND");
  platform.clock = std::make_unique<SystemClock>();
  platform.timeZone = std::make_unique<SystemTimeZone>();
  platform.registry = std::make_unique<FileRegistry>();
  platform.profile = std::make_unique<IniProfile>();
  platform.shell = std::make_unique<LinuxShell>();
  platform.trayIcon = std::make_unique<QtTrayIcon>();
  platform.keyboardHook = MakeKeyboardHook();
  platform.instance = std::make_unique<SocketInstance>();
  platform.codePage = std::make_unique<LocaleCodePage>();
  platform.folders = std::make_unique<FolderReader>();
  platform.mailbox = [](const QString& name) { return std::make_unique<SocketMailbox>(name); };
  return platform;
}

}  // namespace talnik
