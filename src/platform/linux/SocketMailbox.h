#pragma once

#include "platform/Mailbox.h"

#include <QLocalServer>

class QLocalSocket;

namespace talnik {

/// A socket of this user alone. Whoever connects is sent the text and a line feed; each line that it then writes
/// becomes the text. What a peer leaves without a line feed is nothing.
class SocketMailbox : public Mailbox {
 public:
  /// `name` is that of the socket; `folder` stands in for the runtime folder.
  explicit SocketMailbox(QString name, QString folder = {});
  ~SocketMailbox() override;
  SocketMailbox(const SocketMailbox&) = delete;
  SocketMailbox& operator=(const SocketMailbox&) = delete;

  bool Open() override;
  void Close() override;
  QString Address() const override;
  QString Text() const override { return text_; }
  void SetText(const QString& text) override { text_ = text; }

 private:
  void Accept();
  void Hear(QLocalSocket* peer);
  void Take(const QString& text);

  QString name_;
  QString folder_;
  QString text_;
  QLocalServer server_;
};

}  // namespace talnik
