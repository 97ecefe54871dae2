#pragma once

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>

namespace talnik {

/// A list whose Click runs when the selected line changes, by the user or by the program, and at a click on the line
/// that is selected already. An empty selection runs nothing.
class ListBox : public QListWidget {
  Q_OBJECT

 public:
  explicit ListBox(QWidget* parent = nullptr);

  int ListIndex() const { return currentRow(); }
  void SetListIndex(int index) { setCurrentRow(index); }
  int ListCount() const { return count(); }
  /// The text of a line; empty outside the list.
  QString Line(int index) const;
  /// The selected line; empty when there is none.
  QString Text() const { return Line(currentRow()); }

  /// Wide enough for what lines usually hold, in the type of the list.
  QSize sizeHint() const override;
  /// Some lines, however much a window holds below each other.
  QSize minimumSizeHint() const override;

 Q_SIGNALS:
  void Click();

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
};

/// Lets as much of a field be seen as `sample` takes, in the type of the field, however narrow its window.
void WidenFor(QWidget* field, const QString& sample);

/// The same for a path or an address of usual length.
void WidenForPath(QWidget* field);

}  // namespace talnik
