#include "shell/LineDelegate.h"

#include <QListView>
#include <QStringTokenizer>
#include <QTextBoundaryFinder>
#include <QtMath>

namespace talnik {

namespace {

/// A word with a break behind each of its letters.
QString Loosened(const QString& word) {
  constexpr QChar zeroWidthSpace(u'\u200B');
  QString loose;
  QTextBoundaryFinder letters(QTextBoundaryFinder::Grapheme, word);
  qsizetype from = 0;
  for (qsizetype to = letters.toNextBoundary(); to > from; to = letters.toNextBoundary()) {
    if (from > 0) loose += zeroWidthSpace;
    loose += QStringView(word).mid(from, to - from);
    from = to;
  }
  return loose;
}

}  // namespace

int LetterWidths::Of(QStringView text) const {
  int sum = 0;
  for (const QChar letter : text) {
    short& width = widths_[letter.unicode()];
    if (width == 0) width = static_cast<short>(metrics_.horizontalAdvance(letter));
    sum += width;
  }
  return sum;
}

int LetterWidths::Lines(const QString& text, int width) const {
  const QChar blank(u' ');
  int lines = 1;
  int used = 0;
  const auto put = [&](QStringView part) {
    const int needed = Of(part);
    if (used > 0 && used + needed > width) {
      ++lines;
      used = 0;
    }
    used += needed;
  };
  for (const QStringView word : qTokenize(QStringView(text), blank)) {
    if (Of(word) <= width) {
      put(word);
    } else {
      for (qsizetype i = 0; i < word.size(); ++i) put(word.mid(i, 1));
    }
    used += Of(QStringView(&blank, 1));
  }
  return lines;
}

QString LetterWidths::WithBreaks(const QString& text, int width) const {
  if (Of(text) <= width) return text;
  QStringList words = text.split(u' ');
  for (QString& word : words) {
    if (Of(word) > width) word = Loosened(word);
  }
  return words.join(u' ');
}

LineDelegate::LineDelegate(QListView* list) : QStyledItemDelegate(list), list_(list), widths_(list->font()) {}

int LineDelegate::RoomForText() const {
  // Margins of the style, at both sides of a text.
  const int margin = list_->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, list_) + 1;
  return list_->viewport()->width() - 2 * margin;
}

QSize LineDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  if (widths_.Font() != option.font || !line_.isValid()) {
    widths_ = LetterWidths(option.font);
    QStyleOptionViewItem sample = option;
    sample.text = u"M"_qs;
    sample.features = QStyleOptionViewItem::HasDisplay;
    spacing_ = qCeil(QFontMetricsF(option.font).lineSpacing());
    line_ = list_->style()->sizeFromContents(QStyle::CT_ItemViewItem, &sample, {}, list_);
  }
  const int lines = widths_.Lines(index.data().toString(), RoomForText());
  return {line_.width(), line_.height() + (lines - 1) * spacing_};
}

void LineDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  if (widths_.Font() != option->font) widths_ = LetterWidths(option->font);
  option->text = widths_.WithBreaks(option->text, RoomForText());
}

}  // namespace talnik
