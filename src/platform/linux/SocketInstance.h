#pragma once

#include "platform/Instance.h"

#include <QList>
#include <QLocalServer>
#include <QString>

class QLocalSocket;

namespace talnik {

/// A locked file says who is the one process: the system unlocks it whichever way the process ends. A socket beside it
/// takes one word, a line, from each connection.
class SocketInstance : public Instance {
 public:
  /// `folder` stands in for the runtime folder.
  explicit SocketInstance(QString folder = {});
  ~SocketInstance() override;
  SocketInstance(const SocketInstance&) = delete;
  SocketInstance& operator=(const SocketInstance&) = delete;

  /// True also where no folder can be had: a second process is the lesser evil then.
  bool Acquire() override;
  bool Tell(const QString& word) override;

 private:
  QString SocketPath() const;
  QList<QLocalSocket*> Peers() const;
  void Listen();
  void Accept();
  void Hear(QLocalSocket* peer, bool atEnd);

  QString folder_;
  int lock_ = -1;  ///< the descriptor of the locked file
  QLocalServer server_;
};

}  // namespace talnik
