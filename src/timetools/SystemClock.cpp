#include "timetools/SystemClock.h"

#include "shell/VoiceDialog.h"

#include <QCoreApplication>
#include <QPointer>

#include <utility>

namespace talnik {
namespace {

QString RefusalText(Clock::Outcome outcome, const QString& description) {
  if (outcome == Clock::Outcome::NotPermitted)
    return QCoreApplication::translate("SystemClock", "K nastavení nemáte oprávnění.");
  if (description.isEmpty()) return QCoreApplication::translate("SystemClock", "Nastavení se nezdařilo.");
  return description;
}

}  // namespace

void SetSystemClock(FormServices& services, const Date& moment, std::function<void()> afterwards) {
  // The answer can come after the program's windows are gone, and the services with them.
  const QPointer<Speech> alive(&services.speech);
  services.clock.Set(moment.ToQDateTime(), [&services, alive, afterwards = std::move(afterwards)](
                                               Clock::Outcome outcome, const QString& description) {
    if (!alive) return;
    if (outcome != Clock::Outcome::Done) services.dialogs.Warn(RefusalText(outcome, description));
    afterwards();
  });
}

}  // namespace talnik
