#include "shell/FieldForReader.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QLineEdit>

#include <algorithm>

namespace talnik {
namespace {

class FieldForReader : public QAccessibleWidget,
                       public QAccessibleTextInterface,
                       public QAccessibleEditableTextInterface {
 public:
  explicit FieldForReader(QLineEdit* field) : QAccessibleWidget(field, QAccessible::EditableText) {}

  void* interface_cast(QAccessible::InterfaceType kind) override {
    if (kind == QAccessible::TextInterface) return static_cast<QAccessibleTextInterface*>(this);
    if (kind == QAccessible::EditableTextInterface) return static_cast<QAccessibleEditableTextInterface*>(this);
    return QAccessibleWidget::interface_cast(kind);
  }
  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.editable = !Field().isReadOnly();
    state.readOnly = Field().isReadOnly();
    state.selectableText = true;
    state.passwordEdit = Field().echoMode() != QLineEdit::Normal;
    return state;
  }
  QString text(QAccessible::Text kind) const override {
    if (kind == QAccessible::Value) return Field().displayText();
    const QString text = QAccessibleWidget::text(kind);
    return text.isEmpty() && kind == QAccessible::Description ? Field().placeholderText() : text;
  }
  void setText(QAccessible::Text kind, const QString& text) override {
    if (kind != QAccessible::Value) return QAccessibleWidget::setText(kind, text);
    if (!Field().isReadOnly()) Field().setText(text);
  }

  QString text(int from, int to) const override {
    const int begin = Within(from);
    return Field().displayText().mid(begin, std::max(0, Within(to) - begin));
  }
  int characterCount() const override { return static_cast<int>(Field().text().size()); }
  int cursorPosition() const override { return Field().cursorPosition(); }
  void setCursorPosition(int position) override { Field().setCursorPosition(Within(position)); }
  int selectionCount() const override { return Field().hasSelectedText() ? 1 : 0; }
  void selection(int index, int* from, int* to) const override {
    const bool isThere = index == 0 && Field().hasSelectedText();
    *from = isThere ? Field().selectionStart() : 0;
    *to = isThere ? Field().selectionEnd() : 0;
  }
  void setSelection(int index, int from, int to) override {
    if (index == 0) Field().setSelection(Within(from), Within(to) - Within(from));
  }
  void addSelection(int from, int to) override { setSelection(0, from, to); }
  void removeSelection(int index) override {
    if (index == 0) Field().deselect();
  }
  /// At the end of the text stands its last letter.
  QString textAtOffset(int offset, QAccessible::TextBoundaryType boundary, int* from, int* to) const override {
    const int count = characterCount();
    const bool isEnd = boundary != QAccessible::CharBoundary && (offset == -1 || offset == count);
    return QAccessibleTextInterface::textAtOffset(isEnd ? std::max(0, count - 1) : offset, boundary, from, to);
  }
  /// No letter looks other than the rest.
  QString attributes(int, int* from, int* to) const override {
    *from = 0;
    *to = characterCount();
    return {};
  }
  /// The toolkit does not tell where letters are; the caret is what magnifiers follow.
  QRect characterRect(int) const override {
    const QRect caret = Field().inputMethodQuery(Qt::ImCursorRectangle).toRect();
    return {Field().mapToGlobal(caret.topLeft()), caret.size()};
  }
  int offsetAtPoint(const QPoint& point) const override {
    return Field().cursorPositionAt(Field().mapFromGlobal(point));
  }
  void scrollToSubstring(int from, int) override { setCursorPosition(from); }

  void deleteText(int from, int to) override { replaceText(from, to, {}); }
  void insertText(int at, const QString& text) override { replaceText(at, at, text); }
  void replaceText(int from, int to, const QString& text) override {
    if (Field().isReadOnly()) return;
    Field().setText(Field().text().replace(Within(from), std::max(0, Within(to) - Within(from)), text));
  }

 private:
  QLineEdit& Field() const { return *static_cast<QLineEdit*>(widget()); }
  int Within(int position) const { return position < 0 ? characterCount() : std::clamp(position, 0, characterCount()); }
};

QAccessibleInterface* MakeForReader(const QString& kind, QObject* object) {
  if (kind != u"QLineEdit"_qs) return nullptr;
  auto* field = qobject_cast<QLineEdit*>(object);
  return field ? new FieldForReader(field) : nullptr;
}

}  // namespace

void ShowFieldsToReaders() {
  QAccessible::installFactory(MakeForReader);
}

}  // namespace talnik
