// From the call of the file dialog to its first line spoken, in a small folder and in one of 100,000 files, and from a
// key in its list to the call of the voice.

#include "PickerDesk.h"
#include "Promises.h"

#include <QApplication>
#include <QTemporaryDir>

#include <utility>

namespace {

using namespace talnik;

constexpr int kFiles = 100000;
constexpr int kKeys = 300;

void Keys(bench::PickerDesk& desk, fFileOpen& form, bench::Promises& promises) {
  for (const auto& [name, key] : {std::pair("key Down in the file list to the speech call, median", Qt::Key_Down),
                                  std::pair("letter in the file list to the speech call, median", Qt::Key_Z)}) {
    promises.Below(name, bench::MedianToSpeech(desk.voice, form.dirList, key, kKeys), 5, "ms");
  }
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  const QTemporaryDir few;
  const QTemporaryDir many;
  bench::FillFolder(few.path(), 20);
  bench::FillFolder(many.path(), kFiles);
  bench::PickerDesk desk;
  bench::Promises promises;
  const auto nothing = [](fFileOpen&) {};
  promises.Below("the first file dialog, 20 files, until it is spoken", desk.Opening(few.path(), nothing), 100, "ms");
  promises.Below("a file dialog, 20 files, until it is spoken", desk.Opening(few.path(), nothing), 100, "ms");
  const double time = desk.Opening(many.path(), [&](fFileOpen& form) { Keys(desk, form, promises); });
  promises.Below("a file dialog, 100,000 files, until it is spoken", time, 500, "ms");
  return promises.ExitCode();
}
