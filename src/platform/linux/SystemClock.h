#pragma once

#include "platform/Clock.h"

#include <QObject>

#include <memory>

namespace talnik {

class Worker;

/// The clock of the machine. It is set through org.freedesktop.timedate1, which asks the user for the right itself.
class SystemClock : public Clock {
 public:
  /// `busAddress` names another bus than the system's.
  explicit SystemClock(QString busAddress = {});
  ~SystemClock() override;

  QDateTime Now() const override;
  void Set(const QDateTime& moment, SetResult done) override;

 private:
  void Send(const QString& connection, const QDateTime& moment, const SetResult& done);

  QString busAddress_;
  QObject context_;
  std::unique_ptr<Worker> connecting_;
};

/// What an error of the bus means for the user: a refusal, or any other failure.
Clock::Outcome ClockOutcome(const QString& errorName);

}  // namespace talnik
