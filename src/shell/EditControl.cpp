#include "shell/cStandardEditBox.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextBlock>
#include <QTextLayout>

namespace talnik {

namespace {

class LineEditControl : public EditControl {
 public:
  explicit LineEditControl(QLineEdit* edit) : edit_(edit) {}

  QString Text() const override { return Hidden() ? QString(edit_->text().size(), u'*') : edit_->text(); }
  int SelStart() const override { return edit_->hasSelectedText() ? edit_->selectionStart() : edit_->cursorPosition(); }
  int SelLength() const override { return edit_->selectionLength(); }
  QString SelText() const override { return Text().mid(SelStart(), SelLength()); }
  void Select(int start, int length) override { edit_->setSelection(start, length); }
  bool MultiLine() const override { return false; }
  bool Locked() const override { return edit_->isReadOnly(); }
  bool Hidden() const override { return edit_->echoMode() != QLineEdit::Normal; }
  QString CurrentLine(int* column) const override {
    if (column) *column = edit_->cursorPosition();
    return Text();
  }
  QWidget* Widget() const override { return edit_; }

 private:
  QLineEdit* edit_;
};

class PlainTextControl : public EditControl {
 public:
  explicit PlainTextControl(QPlainTextEdit* edit) : edit_(edit) {}

  QString Text() const override { return edit_->toPlainText(); }
  int SelStart() const override { return edit_->textCursor().selectionStart(); }
  int SelLength() const override {
    const QTextCursor cursor = edit_->textCursor();
    return cursor.selectionEnd() - cursor.selectionStart();
  }
  QString SelText() const override {
    return edit_->textCursor().selectedText().replace(QChar::ParagraphSeparator, u'\n');
  }
  void Select(int start, int length) override {
    QTextCursor cursor = edit_->textCursor();
    cursor.setPosition(start);
    cursor.setPosition(start + length, QTextCursor::KeepAnchor);
    edit_->setTextCursor(cursor);
  }
  bool MultiLine() const override { return true; }
  bool Locked() const override { return edit_->isReadOnly(); }
  bool Hidden() const override { return false; }

  /// A line as it is wrapped on the screen, which is what the arrow keys walk over.
  QString CurrentLine(int* column) const override {
    const QTextCursor cursor = edit_->textCursor();
    const QTextBlock block = cursor.block();
    const int inBlock = cursor.positionInBlock();
    const QTextLine line = block.layout()->lineForTextPosition(inBlock);
    if (column) *column = line.isValid() ? inBlock - line.textStart() : inBlock;
    return line.isValid() ? block.text().mid(line.textStart(), line.textLength()) : block.text();
  }
  QWidget* Widget() const override { return edit_; }

 private:
  QPlainTextEdit* edit_;
};

}  // namespace

std::unique_ptr<EditControl> MakeEditControl(QLineEdit* edit) {
  return std::make_unique<LineEditControl>(edit);
}

std::unique_ptr<EditControl> MakeEditControl(QPlainTextEdit* edit) {
  return std::make_unique<PlainTextControl>(edit);
}

}  // namespace talnik
