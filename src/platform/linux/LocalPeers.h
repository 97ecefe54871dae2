#pragma once

class QLocalSocket;

namespace talnik {

/// True if the process at the other end belongs to the user of this one.
bool IsOfThisUser(const QLocalSocket& peer);

/// Lets a peer go, unheard from now on.
void DropPeer(QLocalSocket* peer);

}  // namespace talnik
