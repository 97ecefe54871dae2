#include "calendar/BackToMain.h"

#include <QCoreApplication>

namespace talnik {

void BackToMain::Start() {
  waiting_ = true;
  ForeignWindow = 0;
}

bool BackToMain::Tick(Shell& shell) {
  if (!waiting_) return false;
  if (ForeignWindow == 0) {
    const ForeignWindowInfo focused = shell.WindowWithFocus();
    for (const QString& word : {QCoreApplication::translate("BackToMain", "Nastavení"),
                                QCoreApplication::translate("BackToMain", "O programu")}) {
      if (focused.title.contains(word)) ForeignWindow = focused.handle;
    }
  }
  if (ForeignWindow == 0 || shell.WindowExists(ForeignWindow)) return false;
  waiting_ = false;
  return true;
}

}  // namespace talnik
