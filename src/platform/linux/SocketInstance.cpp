#include "platform/linux/SocketInstance.h"

#include "platform/linux/LocalPeers.h"
#include "platform/linux/UserFolders.h"

#include <QFile>
#include <QLocalSocket>
#include <QPointer>
#include <QTimer>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace talnik {

namespace {

constexpr qint64 LongestLine = 64;
constexpr qsizetype MostPeers = 16;
constexpr int PatienceMs = 5000;
constexpr int InstanceAnswerMs = 1000;

}  // namespace

SocketInstance::SocketInstance(QString folder) : folder_(std::move(folder)) {
  if (folder_.isEmpty()) folder_ = RuntimeFolder();
  QObject::connect(&server_, &QLocalServer::newConnection, &server_, [this] { Accept(); });
}

SocketInstance::~SocketInstance() {
  for (QLocalSocket* peer : Peers()) peer->disconnect();
  server_.close();
  if (lock_ >= 0) ::close(lock_);
}

QString SocketInstance::SocketPath() const {
  return folder_ + u"/talnik.socket";
}

QList<QLocalSocket*> SocketInstance::Peers() const {
  return server_.findChildren<QLocalSocket*>(Qt::FindDirectChildrenOnly);
}

bool SocketInstance::Acquire() {
  if (lock_ >= 0 || folder_.isEmpty()) return true;
  const QByteArray path = QFile::encodeName(folder_ + u"/talnik.lock");
  const int lock = ::open(path, O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR);
  if (lock < 0) return true;
  if (::flock(lock, LOCK_EX | LOCK_NB) != 0) {
    const bool taken = errno == EWOULDBLOCK;
    ::close(lock);
    return !taken;
  }
  lock_ = lock;
  Listen();
  return true;
}

void SocketInstance::Listen() {
  // Whoever holds the lock owns the socket; one that lies there is of a process that was killed.
  QLocalServer::removeServer(SocketPath());
  server_.setSocketOptions(QLocalServer::UserAccessOption);
  if (!server_.listen(SocketPath())) qWarning("talnik: %s", qPrintable(server_.errorString()));
}

void SocketInstance::Accept() {
  while (QLocalSocket* peer = server_.nextPendingConnection()) {
    if (!IsOfThisUser(*peer)) {
      DropPeer(peer);
      continue;
    }
    if (const auto peers = Peers(); peers.size() > MostPeers) DropPeer(peers.first());
    peer->setReadBufferSize(LongestLine);
    QObject::connect(peer, &QLocalSocket::readyRead, peer, [this, peer] { Hear(peer, false); });
    QObject::connect(peer, &QLocalSocket::disconnected, peer, [this, peer] { Hear(peer, true); });
    QTimer::singleShot(PatienceMs, peer, [this, peer] { Hear(peer, true); });
    Hear(peer, peer->state() != QLocalSocket::ConnectedState);
  }
}

void SocketInstance::Hear(QLocalSocket* peer, bool atEnd) {
  if (!peer->canReadLine() && !atEnd && peer->bytesAvailable() < LongestLine) return;
  const QString word = QString::fromUtf8(peer->readLine(LongestLine + 1).trimmed());
  DropPeer(peer);
  if (word != u"show"_qs && word != u"close"_qs) return;
  // What the word sets off may open windows and last; the socket's own work ends first.
  QTimer::singleShot(0, &server_, [this, word] {
    if (Told) Told(word);
  });
}

bool SocketInstance::Tell(const QString& word) {
  if (folder_.isEmpty()) return false;
  QLocalSocket socket;
  socket.connectToServer(SocketPath(), QIODevice::WriteOnly);
  if (!socket.waitForConnected(InstanceAnswerMs)) return false;
  socket.write(word.toUtf8() + '\n');
  while (socket.bytesToWrite() > 0) {
    if (!socket.waitForBytesWritten(InstanceAnswerMs)) return false;
  }
  socket.disconnectFromServer();
  return true;
}

}  // namespace talnik
