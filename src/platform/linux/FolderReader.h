#pragma once

#include "platform/Folders.h"

#include <QObject>
#include <QTimer>

#include <atomic>
#include <memory>

namespace talnik {

class Worker;

/// Reads on the calling thread, however long that takes.
Folders::Answer ReadFolder(const QString& path);

/// Folders as the system's calls give them. Each reading has a thread of its own, which is left behind when nobody
/// waits for it any more: a network that is gone can hold such a call for ever.
class FolderReader : public QObject, public Folders {
  Q_OBJECT

 public:
  using System = std::function<Answer(const QString& path)>;

  /// `system` is called on threads of its own.
  explicit FolderReader(System system = ReadFolder);
  ~FolderReader() override;

  QList<Place> Places() const override;
  void Read(const QString& path, std::function<void(const Answer&)> done) override;

 private:
  struct Reading;
  void Leave();
  void OnAnswer(const std::shared_ptr<Reading>& reading, const Answer& answer);

  System system_;
  std::shared_ptr<Reading> reading_;  ///< the one that is waited for
  std::unique_ptr<Worker> worker_;
  std::function<void(const Answer&)> done_;
  std::shared_ptr<std::atomic<int>> alive_;  ///< readings that the system has not come back from
  QTimer patience_;
};

}  // namespace talnik
