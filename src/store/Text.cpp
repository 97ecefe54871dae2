#include "store/Text.h"

#include <QUuid>

#include <algorithm>

namespace talnik {

QString NewGuidText() {
  return QUuid::createUuid().toString(QUuid::Id128);
}

QString ExtractFileName(const QString& path) {
  return path.mid(std::max(path.lastIndexOf(u'/'), path.lastIndexOf(u'\\')) + 1);
}

QString TrimSeconds(const QString& text) {
  const bool hasSeconds = text.size() > 3 && text[text.size() - 3] == u':';
  return hasSeconds ? text.chopped(3) : text;
}

QString StripAtNul(const QString& text) {
  return text.left(text.indexOf(QChar(u'\0')));
}

QString SeriesBase(const QString& guid) {
  return StripAtNul(guid).section(u'_', 0, 0).remove(u'#');
}

QString CutToSize(const QString& text, qsizetype size) {
  if (text.size() <= size) return text;
  return text.left(size > 0 && text[size - 1].isHighSurrogate() ? size - 1 : size);
}

QStringView WithoutOuterBlanks(QStringView text) {
  while (text.startsWith(u' ')) text = text.sliced(1);
  while (text.endsWith(u' ')) text.chop(1);
  return text;
}

QString OnOneLine(QString text) {
  text.replace(u"\r\n"_qs, u" "_qs).replace(u'\r', u' ').replace(u'\n', u' ');
  return WithoutOuterBlanks(text).toString();
}

}  // namespace talnik
