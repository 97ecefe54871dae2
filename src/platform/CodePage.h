#pragma once

#include <QByteArray>
#include <QString>

namespace talnik {

/// The 8-bit encoding of text files.
class CodePage {
 public:
  virtual ~CodePage() = default;

  /// Reads UTF-8 (a byte order mark is dropped), or Windows-1250 where the bytes are no valid UTF-8.
  virtual QString Decode(const QByteArray& bytes) const = 0;

  /// Writes in the encoding of the locale.
  virtual QByteArray Encode(const QString& text) const = 0;
};

}  // namespace talnik
