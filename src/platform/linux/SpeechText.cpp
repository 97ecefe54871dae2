#include "platform/linux/SpeechText.h"

#include <QCoreApplication>

#include <algorithm>

namespace talnik {

namespace {

constexpr qsizetype LongestPiece = 2000;

bool IsSilent(QChar c) {
  return c.isSpace() || c.category() == QChar::Other_Control;
}

bool EndsSentence(QChar c) {
  return c == u'.' || c == u'!' || c == u'?' || c == u';';
}

}  // namespace

bool IsSpeakable(QStringView text) {
  return !std::all_of(text.begin(), text.end(), IsSilent);
}

QString SpeakableText(const QString& text) {
  QString speakable = text;
  for (QChar& c : speakable) {
    if (c.category() == QChar::Other_Control) c = u' ';
  }
  return speakable.trimmed();
}

QString SpeakableCharacter(const QString& character, bool& isWords) {
  static const struct {
    char16_t character;
    const char* words;
  } named[] = {{u' ', QT_TRANSLATE_NOOP("SpeechText", "mezera")},
               {u'\u00a0', QT_TRANSLATE_NOOP("SpeechText", "mezera")},
               {u'\t', QT_TRANSLATE_NOOP("SpeechText", "tabulátor")},
               {u'\n', QT_TRANSLATE_NOOP("SpeechText", "nový řádek")},
               {u'\r', QT_TRANSLATE_NOOP("SpeechText", "nový řádek")}};
  isWords = true;
  if (character.size() == 1) {
    for (const auto& name : named) {
      if (character == QChar(name.character)) return QCoreApplication::translate("SpeechText", name.words);
    }
  }
  if (character.size() > 2) return character;
  QString text = SpeakableText(character);
  const bool isPair = text.size() == 2 && text.at(0).isHighSurrogate() && text.at(1).isLowSurrogate();
  isWords = text.size() != 1 && !isPair;
  return text;
}

qsizetype PieceEnd(const QString& text, qsizetype from) {
  if (text.size() - from <= LongestPiece) return text.size();
  const qsizetype last = from + LongestPiece;
  qsizetype blank = -1;
  for (qsizetype i = last; i > from; --i) {
    if (!text.at(i).isSpace()) continue;
    if (EndsSentence(text.at(i - 1))) return i;
    if (blank < 0) blank = i;
  }
  if (blank > 0) return blank;
  return text.at(last).isLowSurrogate() && text.at(last - 1).isHighSurrogate() ? last - 1 : last;
}

std::chrono::milliseconds PatienceFor(QStringView text) {
  using std::chrono::milliseconds;
  // Digits and signs are said as whole words. Of a very long text the beginning is sample enough.
  const QStringView sample = text.left(10 * LongestPiece);
  milliseconds time(3000);
  for (const QChar c : sample) time += milliseconds(c.isLetter() || c.isSpace() ? 150 : 800);
  if (sample.size() < text.size()) time *= text.size() / sample.size() + 1;
  return time;
}

}  // namespace talnik
