#include "editor/FieldText.h"

namespace talnik {

QString TrimEndBlanks(const QString& text) {
  qsizetype end = text.size();
  while (end > 0 && text[end - 1] == u' ') --end;
  return text.left(end);
}

QString TrimBlanks(const QString& text) {
  const QString trimmed = TrimEndBlanks(text);
  qsizetype begin = 0;
  while (begin < trimmed.size() && trimmed[begin] == u' ') ++begin;
  return trimmed.mid(begin);
}

}  // namespace talnik
