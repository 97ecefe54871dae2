#pragma once

#include "TimedVoice.h"
#include "menus/FilePickers.h"
#include "menus/FolderView.h"
#include "menus/fFileOpen.h"
#include "platform/linux/FolderReader.h"
#include "shell/cSetting.h"
#include "support/FakePlatform.h"

#include <QFile>
#include <QRandomGenerator>
#include <QTimer>

#include <functional>

namespace talnik::bench {

/// Files with names as people give them, in the order of nothing.
inline void FillFolder(const QString& folder, int count) {
  QRandomGenerator random(11);
  for (int i = 0; i < count; ++i) {
    QFile file(folder + QStringLiteral("/Záznam č. %1 ze dne %2.txt").arg(random.bounded(1000000)).arg(i));
    file.open(QIODevice::WriteOnly);
  }
}

/// What the file dialog needs, over fakes and the real folders.
struct PickerDesk {
  PickerDesk() { dialogs.PickFile = MakeFilePicker(services, folders, world.registry); }

  /// Milliseconds from the call of the dialog to its first line spoken; `then` works in it.
  double Opening(const QString& folder, const std::function<void(fFileOpen&)>& then) {
    double time = 1e9;
    voice.Listen();
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
      auto* form = dynamic_cast<fFileOpen*>(QApplication::activeModalWidget());
      if (!form || !voice.WasSpoken()) return;
      poll.stop();
      time = voice.Milliseconds();
      then(*form);
      form->reject();
    });
    poll.start(1);
    dialogs.VoiceDialog(MakeCommand(7, Dialogs::OpenFile), QString(QStringLiteral("*.*|") + folder + u"|X"));
    return time;
  }

  TimedVoice voice;
  test::FakeWorld world;
  FolderReader folders;
  Speech speech{&voice, world.braille, world.sound, QStringLiteral("/s/")};
  CommonSettings look;
  cSetting setting{world.profile, world.shell};
  FormServices services{speech, dialogs, world.clock, look, setting};
  Dialogs dialogs{services};
};

}  // namespace talnik::bench
