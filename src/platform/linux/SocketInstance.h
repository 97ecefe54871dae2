#pragma once

#include "platform/Instance.h"

#include <QLocalServer>
#include <QLocalSocket>
#include <QLockFile>
#include <QObject>

#include <memory>

namespace talnik {

/// A lock file says who is the one process; a socket beside it takes one word from each connection.
class SocketInstance : public Instance {
 public:
  /// `folder` stands in for the runtime folder.
  explicit SocketInstance(QString folder = {});

  bool Acquire() override;
  bool Tell(const QString& word) override;

 private:
  QString SocketPath() const;
  void Listen();
  void Accept();
  void Hear(QLocalSocket* peer, bool atEnd);

  QString folder_;
  std::unique_ptr<QLockFile> lock_;
  QLocalServer server_;
};

}  // namespace talnik
