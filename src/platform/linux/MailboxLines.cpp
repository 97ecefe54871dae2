#include "platform/linux/MailboxLines.h"

#include <QIODevice>

namespace talnik {

Writer TakeLines(QIODevice& from, const std::function<bool(const QString& text)>& take) {
  constexpr int linesAtOnce = 64;  // then the keys have their turn, however fast a peer writes
  for (int line = 0; line < linesAtOnce && from.canReadLine(); ++line) {
    QString text = QString::fromUtf8(from.readLine());
    while (text.endsWith(u'\n') || text.endsWith(u'\r')) text.chop(1);
    if (!take(text)) return Writer::MayWriteOn;
  }
  if (from.canReadLine()) return Writer::HasMore;
  return from.bytesAvailable() >= LongestMailboxLine ? Writer::WritesTooMuch : Writer::MayWriteOn;
}

}  // namespace talnik
