#include "calendar/Tray.h"

#include <QtGlobal>

namespace talnik {

const QList<TrayItem>& TrayItems() {
  static const QList<TrayItem> items = {
      {10, QT_TRANSLATE_NOOP("Tray", "Otevřít talník"), ""},
      {90, "", ""},
      {20, "", "mnuTaskToday"},
      {30, "", "mnuTaskTodayAfter"},
      {40, "", "mnuTaskAll"},
      {50, "", "mnuTaskAlarm"},
      {91, "", ""},
      {99, QT_TRANSLATE_NOOP("Tray", "Konec"), ""},
  };
  return items;
}

}  // namespace talnik
