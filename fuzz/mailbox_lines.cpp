#include "Fuzz.h"
#include "platform/linux/MailboxLines.h"

#include <QBuffer>
#include <QStringList>

using namespace talnik;

/// What a writer sends comes in pieces; the first byte tells where it is cut.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const QByteArray bytes = fuzz::Bytes(data + 1, size - 1);
  const qsizetype cut = bytes.size() * data[0] / 256;
  QByteArray sent;
  QBuffer box(&sent);
  box.open(QIODevice::ReadOnly);
  QStringList taken;
  for (const QByteArray& piece : {bytes.left(cut), bytes.mid(cut)}) {
    sent += piece;
    Writer writer = Writer::HasMore;
    while (writer == Writer::HasMore) {
      const qsizetype before = taken.size();
      writer = TakeLines(box, [&taken](const QString& text) {
        taken << text;
        return true;
      });
      fuzz::Require(writer != Writer::HasMore || taken.size() > before, "each turn takes something of what is there");
    }
    fuzz::Require(writer == Writer::MayWriteOn, "what is no longer than a line is not too much");
  }
  fuzz::Require(taken.size() == bytes.count('\n'), "each line that has ended is taken, and no other");
  const QList<QByteArray> lines = bytes.split('\n');
  for (qsizetype line = 0; line < taken.size(); ++line) {
    QByteArray expected = lines[line];
    while (expected.endsWith('\r')) expected.chop(1);
    fuzz::Require(taken[line] == QString::fromUtf8(expected), "lines come whole and in their order");
  }
  return 0;
}
