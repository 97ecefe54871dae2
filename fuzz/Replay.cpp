#include "Fuzz.h"

#include <QDirIterator>
#include <QFileInfo>

namespace {

int Replay(const QString& path) {
  QFile file(path);
  talnik::fuzz::Require(file.open(QIODevice::ReadOnly), "every input can be read");
  const QByteArray bytes = file.readAll();
  std::fprintf(stderr, "%s\n", qPrintable(path));
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                         static_cast<std::size_t>(bytes.size()));
  return 1;
}

}  // namespace

/// Feeds the files named, and all below the folders named, to the fuzzer this is linked with.
int main(int count, char** words) {
  int fed = 0;
  for (int i = 1; i < count; ++i) {
    const QString path = QString::fromLocal8Bit(words[i]);
    if (QFileInfo(path).isFile()) fed += Replay(path);
    QDirIterator below(path, QDir::Files, QDirIterator::Subdirectories);
    while (below.hasNext()) fed += Replay(below.next());
  }
  std::fprintf(stderr, "%d inputs\n", fed);
  return fed > 0 ? 0 : 1;
}
