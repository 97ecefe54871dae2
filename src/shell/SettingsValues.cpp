#include "shell/SettingsValues.h"

#include "dates/LeadingNumber.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <limits>

namespace talnik {

namespace {

constexpr std::array TabNames = {QT_TRANSLATE_NOOP("frmSettings", "Obecné"),
                                 QT_TRANSLATE_NOOP("frmSettings", "Google")};

constexpr std::array ExitModes = {QT_TRANSLATE_NOOP("frmSettings", "Zobrazit dotaz při uzavření"),
                                  QT_TRANSLATE_NOOP("frmSettings", "Ukončit při uzavření"),
                                  QT_TRANSLATE_NOOP("frmSettings", "Skrýt při uzavření")};

constexpr std::array NewAlarms = {
    QT_TRANSLATE_NOOP("frmSettings", "žádný"),           QT_TRANSLATE_NOOP("frmSettings", "přesně"),
    QT_TRANSLATE_NOOP("frmSettings", "5 minut předem"),  QT_TRANSLATE_NOOP("frmSettings", "10 minut předem"),
    QT_TRANSLATE_NOOP("frmSettings", "15 minut předem"), QT_TRANSLATE_NOOP("frmSettings", "30 minut předem"),
    QT_TRANSLATE_NOOP("frmSettings", "1 hodina předem"), QT_TRANSLATE_NOOP("frmSettings", "2 hodiny předem"),
    QT_TRANSLATE_NOOP("frmSettings", "3 hodiny předem"), QT_TRANSLATE_NOOP("frmSettings", "1 den předem"),
    QT_TRANSLATE_NOOP("frmSettings", "2 dny předem"),    QT_TRANSLATE_NOOP("frmSettings", "3 dny předem"),
    QT_TRANSLATE_NOOP("frmSettings", "1 týden předem")};

template <class Table>
QStringList Translated(const Table& table) {
  QStringList texts;
  for (const char* text : table) texts << QCoreApplication::translate("frmSettings", text);
  return texts;
}

}  // namespace

QStringList SettingsTabNames() {
  return Translated(TabNames);
}

int NextTab(int current, bool forward) {
  constexpr int count = static_cast<int>(TabNames.size());
  return (current + (forward ? 1 : count - 1)) % count;
}

QStringList ExitModeTexts() {
  return Translated(ExitModes);
}

QStringList NewAlarmTexts() {
  return Translated(NewAlarms);
}

int LenientNumber(const QString& text) {
  return static_cast<int>(LeadingNumber(text.trimmed(), std::numeric_limits<int>::max()));
}

QString MovedNumber(const QString& text, int by) {
  const qint64 moved = qint64{LenientNumber(text)} + by;
  return QString::number(std::clamp<qint64>(moved, 0, std::numeric_limits<int>::max()));
}

}  // namespace talnik
