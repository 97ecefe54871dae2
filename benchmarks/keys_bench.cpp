// From a key in the month list to the call of the voice, over a store of 100,000 rows of ten years. Sounds take no time
// here: a day that holds tasks is spoken behind its cue.

#include "Promises.h"
#include "TenYears.h"
#include "TimedVoice.h"
#include "calendar/frmMain.h"
#include "shell/TextControls.h"
#include "support/FakePlatform.h"

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QTest>

int main(int argc, char** argv) {
  using namespace talnik;
  constexpr int rows = 100000;
  constexpr int moves = 500;
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  const QTemporaryDir folder;
  test::FakeWorld world;
  world.shell.LocalData = folder.path();
  world.shell.Installed = folder.path() + u"/installed/"_qs;
  const QString data = folder.path() + u"/Orvel1/TALNIK"_qs;
  QDir().mkpath(data);
  if (!bench::MakeTenYears(data + u"/talnik.MDB"_qs, rows)) return 1;

  auto timed = std::make_unique<bench::TimedVoice>();
  bench::TimedVoice& voice = *timed;
  world.platform.voice = std::move(timed);
  voice.Listen();
  frmMain main(std::move(world.platform), {});
  main.Load();
  if (!QTest::qWaitFor([&] { return main.List1->hasFocus() && voice.WasSpoken(); })) {
    std::puts("the month was not spoken");
    return 1;
  }
  bench::Promises promises;
  promises.Below("start until the month is spoken, in process", voice.Milliseconds(), 300, "ms");
  promises.Below("key Down to the speech call, median", bench::MedianToSpeech(voice, main.List1, Qt::Key_Down, moves),
                 5, "ms");
  return promises.ExitCode();
}
