#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

/// What every fuzzer is: called with any bytes, it may end the process only by a fault of what it feeds them to.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace talnik::fuzz {

/// A promise about whatever was read. Broken, it ends the process like any other fault.
inline void Require(bool kept, const char* promise) {
  if (kept) return;
  std::fprintf(stderr, "broken: %s\n", promise);
  std::abort();
}

inline QByteArray Bytes(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)};
}

inline QString Text(const std::uint8_t* data, std::size_t size) {
  return QString::fromUtf8(Bytes(data, size));
}

/// A file of the fuzzer's own, in memory where the machine has a place for that.
class File {
 public:
  QString Path() const { return folder_.filePath(QStringLiteral("file")); }
  void Write(const QByteArray& bytes) const {
    QFile file(Path());
    Require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(), "the fuzzer can write its file");
  }

 private:
  QTemporaryDir folder_{QFile::exists(QStringLiteral("/dev/shm")) ? QStringLiteral("/dev/shm/talnik-XXXXXX")
                                                                  : QStringLiteral("talnik-XXXXXX")};
};

}  // namespace talnik::fuzz
