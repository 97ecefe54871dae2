#pragma once

#include <QString>
#include <QStringView>

#include <array>
#include <cstddef>

namespace talnik {

/// A fresh identity: 32 lower-case hexadecimal digits.
QString NewGuidText();

/// The text behind the last "/" or "\".
QString ExtractFileName(const QString& path);

/// The display form of a stored date: without ":ss" when the text ends in it.
QString TrimSeconds(const QString& text);

/// The text up to its first NUL.
QString StripAtNul(const QString& text);

/// The part of a guid before its first "_", without "#": what all rows of one series share.
QString SeriesBase(const QString& guid);

/// The text cut to `size` characters, never within a surrogate pair.
QString CutToSize(const QString& text, qsizetype size);

/// The text without outer blanks.
QStringView WithoutOuterBlanks(QStringView text);

/// A text of several lines as one line, without outer blanks: each end of a line is one blank.
QString OnOneLine(QString text);

/// The first fields of a line, split at each separator; what is missing is empty, what is too much is passed over.
template <std::size_t Count>
std::array<QStringView, Count> SplitFields(QStringView line, QChar separator) {
  std::array<QStringView, Count> fields;
  for (QStringView& field : fields) {
    const qsizetype end = line.indexOf(separator);
    field = end < 0 ? line : line.first(end);
    if (end < 0) break;
    line = line.sliced(end + 1);
  }
  return fields;
}

}  // namespace talnik
