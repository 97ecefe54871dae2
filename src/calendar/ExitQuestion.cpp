#include "calendar/ExitQuestion.h"

#include <QCoreApplication>

namespace talnik {

ExitDecision DecideExit(int exitMode, const std::function<int()>& choose) {
  enum Mode { Exit = 1, Hide = 2 };
  if (exitMode == Exit) return {.HideOnClose = false, .stopSpeech = true};
  if (exitMode == Hide) return {.HideOnClose = true};
  switch (choose()) {
    case 1:
      return {.HideOnClose = false, .exitWithoutHide = true};
    case 2:
      return {.HideOnClose = true};
    case 3:
      return {.HideOnClose = false, .stopSpeech = true, .ExitMode = Exit};
    case 4:
      return {.HideOnClose = true, .ExitMode = Hide};
    default:
      return {.cancel = true};
  }
}

QString ExitChoices(const QString& caption) {
  const auto text = [](const char* czech) { return QCoreApplication::translate("ExitQuestion", czech); };
  return text(QT_TRANSLATE_NOOP("ExitQuestion", "Co dělat?")) + u';' +
         text(QT_TRANSLATE_NOOP("ExitQuestion", "Ukončit ")) + caption + u';' +
         text(QT_TRANSLATE_NOOP("ExitQuestion", "Skrýt ")) + caption + u';' +
         text(QT_TRANSLATE_NOOP("ExitQuestion", "Vždy ukončit a příště se již neptat")) + u';' +
         text(QT_TRANSLATE_NOOP("ExitQuestion", "Vždy skrýt a příště se již neptat")) + u';' +
         text(QT_TRANSLATE_NOOP("ExitQuestion", "Zpět"));
}

}  // namespace talnik
