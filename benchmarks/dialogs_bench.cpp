// From the choice of a command to the first words of its dialog, over a store of 100,000 rows of ten years, and from a
// key in a menu to the call of the voice. Sounds take no time here.

#include "MainDesk.h"
#include "Promises.h"
#include "TenYears.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QMenu>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

namespace {

using namespace talnik;

constexpr int kRows = 100000;
constexpr int kOpenings = 9;
constexpr int kKeys = 300;
constexpr int kTurnsToSettle = 5;
constexpr double kPromisedMs = 100;

struct Command {
  const char* what;
  const char* name;
};

constexpr Command kCommands[] = {{"settings", "mnuSettings"},      {"editor, the tasks of a day", "mnuTaskToday"},
                                 {"day overview", "mnuSpareTime"}, {"search", "mnuSearchRecord"},
                                 {"date", "mnuSetDate"},           {"time", "mnuSetTime"},
                                 {"countdown", "mnuTimeOut"},      {"stop watch", "mnuRaceTime"},
                                 {"announcements", "mnuDingHour"}, {"search of name days", "mnuHolFind"},
                                 {"about, a message", "mnuAbout"}};

struct Desk : bench::MainDesk {
  using MainDesk::MainDesk;

  /// Milliseconds from `open`, which shows a modal window, to its last word before it rests; `then` works in it.
  double Opening(const std::function<void()>& open, const std::function<void(QDialog&)>& then) {
    double time = -1;
    QWidget* below = QApplication::activeModalWidget();
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (!dialog || dialog == below || !dialog->isActiveWindow() || !voice->WasSpoken()) return;
      poll.stop();
      time = voice->Milliseconds();
      then(*dialog);
      dialog->reject();
    });
    voice->Listen();
    poll.start(0);
    open();
    // What the window below says when it is back belongs to no opening.
    QWidget* back = below ? below : main.get();
    if (!QTest::qWaitFor([&] { return back->isActiveWindow(); })) time = -1;
    for (int turn = 0; turn < kTurnsToSettle; ++turn) QApplication::processEvents();
    return time;
  }

  double Median(const std::function<double()>& opening) {
    std::vector<double> times(kOpenings);
    std::generate(times.begin(), times.end(), opening);
    return bench::Median(times);
  }

  bench::Promises promises;
};

void MeasureDialogs(Desk& desk) {
  for (const Command& command : kCommands) {
    const auto open = [&] { desk.main->Menu(command.name)->trigger(); };
    const double first = desk.Opening(open, [](QDialog&) {});
    const double median = desk.Median([&] { return desk.Opening(open, [](QDialog&) {}); });
    const std::string what = std::string("dialog until it is spoken: ") + command.what;
    desk.promises.Below((what + ", first").c_str(), first < 0 ? 1e9 : first, kPromisedMs, "ms");
    desk.promises.Below((what + ", median").c_str(), median < 0 ? 1e9 : median, kPromisedMs, "ms");
  }
}

/// The dialog of the rule stands over the editor.
void MeasureRepeat(Desk& desk) {
  double time = -1;
  desk.Opening([&] { desk.main->Menu("mnuTaskToday")->trigger(); },
               [&](QDialog& editor) {
                 auto* button = editor.findChild<QPushButton*>(u"cmdRepeat"_qs);
                 time = desk.Median([&] { return desk.Opening([&] { button->click(); }, [](QDialog&) {}); });
               });
  desk.promises.Below("dialog until it is spoken: repetition, median", time < 0 ? 1e9 : time, kPromisedMs, "ms");
}

void MeasureMenu(Desk& desk) {
  auto* menu = qobject_cast<QMenu*>(desk.main->Menu("mnuHide")->parent());
  menu->popup({});
  QApplication::processEvents();
  desk.promises.Below("key Down in a menu to the speech call, median",
                      bench::MedianToSpeech(*desk.voice, menu, Qt::Key_Down, kKeys), 5, "ms");
  menu->close();
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  const QTemporaryDir folder;
  if (!bench::MakeTenYears(bench::MainDesk::StoreIn(folder.path()), kRows)) return 1;
  Desk desk(folder.path());
  if (!desk.Start()) {
    std::puts("the month was not spoken");
    return 1;
  }
  // Occurrences without a series, which only a made-up store holds, are swept by the first look at the tasks.
  desk.Opening([&] { desk.main->Menu("mnuTaskToday")->trigger(); }, [](QDialog&) {});
  MeasureDialogs(desk);
  MeasureRepeat(desk);
  MeasureMenu(desk);
  return desk.promises.ExitCode();
}
