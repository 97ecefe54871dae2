#pragma once

#include <QString>

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

}  // namespace talnik
