// From the call of the file dialog to its first line spoken, in a small folder and in one of 100,000 files, and from a
// key in its list to the call of the voice.

#include "Promises.h"
#include "TimedVoice.h"
#include "menus/FilePickers.h"
#include "menus/FolderView.h"
#include "menus/fFileOpen.h"
#include "platform/linux/FolderReader.h"
#include "shell/cSetting.h"
#include "support/FakePlatform.h"

#include <QApplication>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTimer>

#include <functional>
#include <utility>

namespace {

using namespace talnik;

constexpr int kFiles = 100000;
constexpr int kKeys = 300;

/// Files with names as people give them, in the order of nothing.
void Fill(const QString& folder, int count) {
  QRandomGenerator random(11);
  for (int i = 0; i < count; ++i) {
    QFile file(folder + u"/Záznam č. %1 ze dne %2.txt"_qs.arg(random.bounded(1000000)).arg(i));
    file.open(QIODevice::WriteOnly);
  }
}

struct Bench {
  bench::TimedVoice voice;
  test::FakeWorld world;
  FolderReader folders;
  Speech speech{&voice, world.braille, world.sound, u"/s/"_qs};
  CommonSettings look;
  cSetting setting{world.profile, world.shell};
  FormServices services{speech, dialogs, world.clock, look, setting};
  Dialogs dialogs{services};
  bench::Promises promises;

  Bench() { dialogs.PickFile = MakeFilePicker(services, folders, world.registry); }

  void Keys(fFileOpen& form) {
    for (const auto& [name, key] : {std::pair("key Down to the speech call, median", Qt::Key_Down),
                                    std::pair("letter to the speech call, median", Qt::Key_Z)}) {
      promises.Below(name, bench::MedianToSpeech(voice, form.dirList, key, kKeys), 5, "ms");
    }
  }

  void Open(const char* what, const QString& folder, double promised, const std::function<void(fFileOpen&)>& then) {
    voice.Listen();
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
      auto* form = dynamic_cast<fFileOpen*>(QApplication::activeModalWidget());
      if (!form || !voice.WasSpoken()) return;
      poll.stop();
      promises.Below(what, voice.Milliseconds(), promised, "ms");
      then(*form);
      form->reject();
    });
    poll.start(1);
    dialogs.VoiceDialog(MakeCommand(7, Dialogs::OpenFile), u"*.*|"_qs + folder + u"|X"_qs);
  }
};

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  const QTemporaryDir few;
  const QTemporaryDir many;
  Fill(few.path(), 20);
  Fill(many.path(), kFiles);
  Bench desk;
  desk.Open("the first file dialog, 20 files, until it is spoken", few.path(), 100, [](fFileOpen&) {});
  desk.Open("a file dialog, 20 files, until it is spoken", few.path(), 100, [](fFileOpen&) {});
  desk.Open("a file dialog, 100,000 files, until it is spoken", many.path(), 500,
            [&](fFileOpen& form) { desk.Keys(form); });
  return desk.promises.ExitCode();
}
