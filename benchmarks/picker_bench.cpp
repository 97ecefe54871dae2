// From the call of the file dialog to its first line spoken, in a small folder and in one of 100,000 files, and from a
// key in its list to the call of the voice.

#include "menus/FilePickers.h"
#include "menus/FolderView.h"
#include "menus/fFileOpen.h"
#include "platform/linux/FolderReader.h"
#include "platform/none/None.h"
#include "shell/cSetting.h"
#include "support/FakePlatform.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

namespace {

using namespace talnik;

constexpr int kFiles = 100000;
constexpr int kKeys = 300;

/// Tells when it is spoken to.
class TimedVoice : public NoneVoice {
 public:
  explicit TimedVoice(const QElapsedTimer& clock) : clock_(clock) {}
  void Speak(const QString&, Join, Urgency) override { SpokenAt = clock_.nsecsElapsed(); }
  qint64 SpokenAt = 0;

 private:
  const QElapsedTimer& clock_;
};

/// Files with names as people give them, in the order of nothing.
void Fill(const QString& folder, int count) {
  QRandomGenerator random(11);
  for (int i = 0; i < count; ++i) {
    QFile file(folder + u"/Záznam č. %1 ze dne %2.txt"_qs.arg(random.bounded(1000000)).arg(i));
    file.open(QIODevice::WriteOnly);
  }
}

struct Bench {
  QElapsedTimer clock;
  TimedVoice voice{clock};
  test::FakeWorld world;
  FolderReader folders;
  Speech speech{&voice, world.braille, world.sound, u"/s/"_qs};
  CommonSettings look;
  cSetting setting{world.profile, world.shell};
  FormServices services{speech, dialogs, world.clock, look, setting};
  Dialogs dialogs{services};
  bool kept = true;

  Bench() {
    clock.start();
    dialogs.PickFile = MakeFilePicker(services, folders, world.registry);
  }

  void Report(const char* what, qint64 nanoseconds, double promised) {
    const double milliseconds = static_cast<double>(nanoseconds) / 1e6;
    std::printf("%-55s %8.3f ms   promised %.0f\n", what, milliseconds, promised);
    kept = kept && milliseconds < promised;
  }

  qint64 Key(FolderView& list, int key) {
    voice.SpokenAt = 0;
    const qint64 pressed = clock.nsecsElapsed();
    QTest::keyClick(&list, static_cast<Qt::Key>(key));
    const qint64 spoken = voice.SpokenAt;
    QApplication::processEvents();
    return spoken > 0 ? spoken - pressed : 0;
  }

  void Keys(fFileOpen& form) {
    for (const auto& [name, key] : {std::pair("key Down to the speech call, median", Qt::Key_Down),
                                    std::pair("letter to the speech call, median", Qt::Key_Z)}) {
      std::vector<qint64> times;
      for (int i = 0; i < kKeys; ++i) {
        if (const qint64 time = Key(*form.dirList, key)) times.push_back(time);
      }
      std::sort(times.begin(), times.end());
      constexpr qint64 never = 1'000'000'000;
      Report(name, times.empty() ? never : times[times.size() / 2], 5);
    }
  }

  void Open(const char* what, const QString& folder, double promised, const std::function<void(fFileOpen&)>& then) {
    const qint64 begin = clock.nsecsElapsed();
    voice.SpokenAt = 0;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
      auto* form = dynamic_cast<fFileOpen*>(QApplication::activeModalWidget());
      if (!form || voice.SpokenAt == 0) return;
      poll.stop();
      Report(what, voice.SpokenAt - begin, promised);
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
  Bench bench;
  bench.Open("the first file dialog, 20 files, until it is spoken", few.path(), 100, [](fFileOpen&) {});
  bench.Open("a file dialog, 20 files, until it is spoken", few.path(), 100, [](fFileOpen&) {});
  bench.Open("a file dialog, 100,000 files, until it is spoken", many.path(), 500,
             [&](fFileOpen& form) { bench.Keys(form); });
  return bench.kept ? 0 : 1;
}
