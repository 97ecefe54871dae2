#include "platform/linux/LocalPeers.h"

#include <QLocalSocket>

#include <sys/socket.h>
#include <unistd.h>

namespace talnik {

bool IsOfThisUser(const QLocalSocket& peer) {
  ucred user{};
  socklen_t size = sizeof user;
  const auto descriptor = static_cast<int>(peer.socketDescriptor());
  return ::getsockopt(descriptor, SOL_SOCKET, SO_PEERCRED, &user, &size) == 0 && user.uid == geteuid();
}

void DropPeer(QLocalSocket* peer) {
  peer->disconnect();
  peer->setParent(nullptr);
  peer->abort();
  peer->deleteLater();
}

}  // namespace talnik
