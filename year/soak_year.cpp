#include "Year.h"

#include <QApplication>

#include <cstdio>
#include <cstdlib>

using namespace talnik::soak;

namespace {

constexpr int kAlarmsOfAYear = 10'000;
/// The store's cache fills up meanwhile, and Qt keeps a little of each window that it has shown.
constexpr qint64 kSlack = 2 * 1024 * 1024;
constexpr qint64 kResidentSlack = 4 * 1024 * 1024;
/// In fewer days not everything has been done once before the measuring begins.
constexpr int kDaysToMeasure = 100;

void Row(const char* what, qint64 measured, const char* promised = "") {
  std::printf("  %-42s %9lld   %s\n", what, static_cast<long long>(measured), promised);
}

bool Grew(const char* what, qint64 before, qint64 after, qint64 slack) {
  const bool kept = after - before <= slack;
  Row(what, after - before, kept ? "promised not to grow" : "promised not to grow  NOT KEPT");
  return kept;
}

/// The display that draws nothing says at every window what it cannot do.
void TellAllElse(QtMsgType, const QMessageLogContext&, const QString& text) {
  if (!text.startsWith(QStringLiteral("This plugin does not support"))) std::fprintf(stderr, "%s\n", qPrintable(text));
}

}  // namespace
/// soak_year [DAYS] [SEED]   Exit code 0 only if every alarm rang as the rules say, and nothing grew.
int main(int count, char** words) {
  qputenv("TZ", "Europe/Prague");
  qputenv("LC_ALL", "cs_CZ.UTF-8");
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  qInstallMessageHandler(TellAllElse);
  QApplication application(count, words);
  QApplication::setQuitOnLastWindowClosed(false);
  // The usual style keeps a name of each picture that it has ever drawn, which is Qt's own growth.
  QApplication::setStyle(QStringLiteral("windows"));
  const int days = count > 1 ? std::atoi(words[1]) : 365;
  const auto seed =
      count > 2 ? static_cast<quint32>(std::strtoul(words[2], nullptr, 10)) : QRandomGenerator::global()->generate();
  std::printf("%d days of alarms, seed %u\n", days, seed);
  std::fflush(stdout);

  Year year(days, kAlarmsOfAYear * days / 365, seed);
  const bool rang = year.Run();
  for (const auto& [what, number] : year.counts) Row(what.c_str(), number);
  Row("something else heard than the rules say", rang ? 0 : 1, rang ? "promised 0" : "promised 0  NOT KEPT");
  if (!rang || days < kDaysToMeasure) return rang ? 0 : 1;
  bool kept = Grew("open files, more at the end", year.warm.files, year.end.files, 0);
  kept = Grew("bytes in use, more at the end", year.warm.inUse, year.end.inUse, kSlack) && kept;
  kept = Grew("bytes resident, more at the end", year.warm.resident, year.end.resident, kResidentSlack) && kept;
  return kept ? 0 : 1;
}
