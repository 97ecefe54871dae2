#include "platform/linux/SocketMailbox.h"

#include "platform/linux/LocalPeers.h"
#include "platform/linux/PrivateFiles.h"
#include "platform/linux/UserFolders.h"

#include <QLocalSocket>
#include <QPointer>
#include <QTimer>

#include <utility>

namespace talnik {

namespace {

constexpr qint64 LongestWord = 64 * 1024;
constexpr qsizetype MostWriters = 16;
constexpr int LinesAtOnce = 64;  // then the keys have their turn, however fast a peer writes

}  // namespace

SocketMailbox::SocketMailbox(QString name, QString folder) : name_(std::move(name)), folder_(std::move(folder)) {
  if (folder_.isEmpty()) folder_ = RuntimeFolder();
  server_.setSocketOptions(QLocalServer::UserAccessOption);
  QObject::connect(&server_, &QLocalServer::newConnection, &server_, [this] { Accept(); });
}

SocketMailbox::~SocketMailbox() {
  SocketMailbox::Close();
}

QString SocketMailbox::Address() const {
  return folder_ + u'/' + name_;
}

bool SocketMailbox::Open() {
  if (server_.isListening()) return true;
  if (folder_.isEmpty() || !ClaimPrivateFolder(folder_)) return false;
  QLocalServer::removeServer(Address());  // left by a process that was killed
  return server_.listen(Address());
}

void SocketMailbox::Close() {
  for (QLocalSocket* peer : server_.findChildren<QLocalSocket*>(Qt::FindDirectChildrenOnly)) DropPeer(peer);
  server_.close();
}

void SocketMailbox::Accept() {
  while (QLocalSocket* peer = server_.nextPendingConnection()) {
    const auto peers = server_.findChildren<QLocalSocket*>(Qt::FindDirectChildrenOnly);
    if (!IsOfThisUser(*peer) || peers.size() > MostWriters) {
      DropPeer(peer);
      continue;
    }
    peer->setReadBufferSize(LongestWord);
    QObject::connect(peer, &QLocalSocket::bytesWritten, peer, [this, peer] {
      if (peer->bytesToWrite() == 0 && Taken) Taken();
    });
    peer->write(text_.toUtf8() + '\n');
    QObject::connect(peer, &QLocalSocket::readyRead, peer, [this, peer] { Hear(peer); });
    QObject::connect(peer, &QLocalSocket::disconnected, peer, [this, peer] { Hear(peer); });
    Hear(peer);
  }
}

void SocketMailbox::Hear(QLocalSocket* peer) {
  const QPointer<QLocalSocket> guard(peer);
  for (int line = 0; line < LinesAtOnce && peer->canReadLine(); ++line) {
    Take(peer->readLine());
    if (!guard || !guard->parent()) return;  // the box was closed over it
  }
  if (peer->canReadLine()) {
    QTimer::singleShot(0, peer, [this, peer] { Hear(peer); });
  } else if (peer->bytesAvailable() >= LongestWord || peer->state() != QLocalSocket::ConnectedState) {
    DropPeer(peer);
  }
}

void SocketMailbox::Take(const QByteArray& line) {
  QString text = QString::fromUtf8(line);
  while (text.endsWith(u'\n') || text.endsWith(u'\r')) text.chop(1);
  text_ = text;
  if (Changed) Changed();
}

}  // namespace talnik
