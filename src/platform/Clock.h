#pragma once

#include <QDateTime>
#include <QString>

#include <functional>

namespace talnik {

/// The wall clock of the machine. All of the program asks it for the time, so that a test can set it.
class Clock {
 public:
  enum class Outcome { Done, NotPermitted, Failed };
  /// `description` is the system's own text of a failure.
  using SetResult = std::function<void(Outcome outcome, const QString& description)>;

  virtual ~Clock() = default;

  /// The present local date and time, cut to whole seconds.
  virtual QDateTime Now() const = 0;

  /// Asks the system to set its clock to the local `moment`. Returns at once; `done` runs from the event loop.
  virtual void Set(const QDateTime& moment, SetResult done) = 0;
};

}  // namespace talnik
