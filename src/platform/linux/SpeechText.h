#pragma once

#include <QString>

#include <chrono>

namespace talnik {

/// True when there is anything to say in the text.
bool IsSpeakable(QStringView text);

/// The text as the speech daemon can take it: control characters become blanks, outer blanks go. Empty when there is
/// nothing to say.
QString SpeakableText(const QString& text);

/// What to say for one character: the character itself, or words for one that has no sound of its own ("mezera").
/// `isWords` tells which.
QString SpeakableCharacter(const QString& character, bool& isWords);

/// Where the piece of `text` that begins at `from` ends: long texts are said piece by piece, cut behind a sentence or
/// else between words, so that none of them keeps the daemon from stopping at once.
qsizetype PieceEnd(const QString& text, qsizetype from);

/// A time in which even a slow voice has said the text.
std::chrono::milliseconds PatienceFor(QStringView text);

}  // namespace talnik
