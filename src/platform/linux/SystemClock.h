#pragma once

#include "platform/Clock.h"

#include <QObject>

#include <memory>
#include <vector>

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
  struct Request {
    QDateTime moment;
    SetResult done;
  };
  struct Line;

  void Connect();
  void Connected(const QString& connection);
  void Send(const Request& request);

  QString busAddress_;
  QString connection_;  ///< the name of the last one that was made
  QObject context_;
  std::vector<Request> waiting_;
  std::shared_ptr<Line> line_;  ///< by which a worker that may outlive us reports
  std::unique_ptr<Worker> connecting_;
};

}  // namespace talnik
