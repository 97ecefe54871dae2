#pragma once

#include <QObject>

#include <functional>

namespace talnik {

/// Hears that the system ends the program: at the end of the session, or by hand (SIGTERM, SIGHUP, SIGINT). One object
/// of a process hears it; a second such signal ends the process as it would without it.
class EndSignals : public QObject {
  Q_OBJECT

 public:
  /// `asked` runs from the event loop.
  explicit EndSignals(std::function<void()> asked);
  ~EndSignals() override;
};

}  // namespace talnik
