#pragma once

#include <QFontMetrics>
#include <QStyledItemDelegate>

#include <vector>

class QListView;

namespace talnik {

/// What texts take in one type, summed from their letters: so lines by the hundred thousand are measured in a moment.
/// Laid out together, letters take no more.
class LetterWidths {
 public:
  explicit LetterWidths(const QFont& font) : font_(font), metrics_(font), widths_(0x10000) {}

  const QFont& Font() const { return font_; }
  int Of(QStringView text) const;
  /// How many lines of `width` hold a text that WithBreaks lets be broken.
  int Lines(const QString& text, int width) const;
  /// The text with places to break it within each word that is wider than `width`; nobody sees or hears them.
  QString WithBreaks(const QString& text, int width) const;

 private:
  QFont font_;
  QFontMetrics metrics_;
  mutable std::vector<short> widths_;
};

/// Draws the lines of a list so that nothing of them is cut off: what is wider than the list goes on below, within a
/// word too where the word is wider itself.
class LineDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  explicit LineDelegate(QListView* list);

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

 private:
  int RoomForText() const;

  QListView* list_;
  mutable LetterWidths widths_;
  mutable QSize line_;
  mutable int spacing_ = 0;
};

}  // namespace talnik
