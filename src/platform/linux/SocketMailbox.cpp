#include "platform/linux/SocketMailbox.h"

#include "platform/linux/LocalPeers.h"
#include "platform/linux/MailboxLines.h"
#include "platform/linux/PrivateFiles.h"
#include "platform/linux/UserFolders.h"

#include <QLocalSocket>
#include <QPointer>
#include <QTimer>

#include <utility>

namespace talnik {

namespace {

constexpr qsizetype MostWriters = 16;

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
    peer->setReadBufferSize(LongestMailboxLine);
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
  const Writer writer = TakeLines(*peer, [&](const QString& text) {
    Take(text);
    return guard && guard->parent();  // otherwise the box was closed over it
  });
  if (!guard || !guard->parent()) return;
  if (writer == Writer::HasMore) {
    // A peer that is let go lives on for a while, and may outlive the box.
    QTimer::singleShot(0, &server_, [this, guard] {
      if (guard && guard->parent()) Hear(guard);
    });
  } else if (writer == Writer::WritesTooMuch || peer->state() != QLocalSocket::ConnectedState) {
    DropPeer(peer);
  }
}

void SocketMailbox::Take(const QString& text) {
  text_ = text;
  if (Changed) Changed();
}

}  // namespace talnik
