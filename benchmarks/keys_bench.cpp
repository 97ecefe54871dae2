// From a key in the month list to the call of the voice, over a store of 100,000 rows of ten years. Sounds take no time
// here: a day that holds tasks is spoken behind its cue.

#include "MainDesk.h"
#include "Promises.h"
#include "TenYears.h"

#include <QApplication>
#include <QTemporaryDir>

int main(int argc, char** argv) {
  using namespace talnik;
  constexpr int rows = 100000;
  constexpr int moves = 500;
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  const QTemporaryDir folder;
  if (!bench::MakeTenYears(bench::MainDesk::StoreIn(folder.path()), rows)) return 1;

  bench::MainDesk desk(folder.path());
  const auto start = desk.Start();
  if (!start) {
    std::puts("the month was not spoken");
    return 1;
  }
  bench::Promises promises;
  promises.Below("start until the month is spoken, in process", *start, 300, "ms");
  promises.Below("key Down in the month list to the speech call, median",
                 bench::MedianToSpeech(*desk.voice, desk.main->List1, Qt::Key_Down, moves), 5, "ms");
  return promises.ExitCode();
}
