#include "platform/linux/ReaderFocus.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>

#include <algorithm>

namespace talnik {
namespace {

QString NameOf(QWidget* widget) {
  const auto* interface = QAccessible::queryAccessibleInterface(widget);
  return interface ? interface->text(QAccessible::Name) : QString();
}

QString ValueOf(QWidget* widget) {
  if (auto* line = qobject_cast<QLineEdit*>(widget)) return line->text();
  if (auto* lines = qobject_cast<QPlainTextEdit*>(widget)) return lines->toPlainText();
  if (auto* list = qobject_cast<QComboBox*>(widget)) return list->currentText();
  return {};
}

/// The labels beside a control, which the reader says with it.
QStringList LabelsOf(QWidget* widget) {
  QStringList labels;
  const auto* interface = QAccessible::queryAccessibleInterface(widget);
  if (!interface) return labels;
  for (const auto& [label, relation] : interface->relations(QAccessible::Label)) {
    labels << label->text(QAccessible::Name);
  }
  return labels;
}

}  // namespace

ReaderFocus LookAtFocus() {
  ReaderFocus focus;
  QWidget* control = QApplication::focusWidget();
  focus.inPopup = QApplication::activePopupWidget() || qobject_cast<QMenuBar*>(control);
  if (!control) return focus;
  focus.control = control;
  focus.isText = qobject_cast<QLineEdit*>(control) || qobject_cast<QPlainTextEdit*>(control);
  focus.value = ValueOf(control);
  focus.words = LabelsOf(control);
  // Of a list that drops down the reader says the label, and neither the line at first nor the one that a key moves to.
  const bool isDropDown = qobject_cast<QComboBox*>(control);
  for (QWidget* around = isDropDown ? control->parentWidget() : control; around;
       around = around->isWindow() ? nullptr : around->parentWidget()) {
    focus.words << NameOf(around);
  }
  focus.words << control->window()->windowTitle();
  if (!isDropDown) focus.words << focus.value;
  if (auto* list = qobject_cast<QAbstractItemView*>(control)) {
    focus.words << list->currentIndex().data(Qt::AccessibleTextRole).toString()
                << list->currentIndex().data(Qt::DisplayRole).toString();
  }
  if (auto* button = qobject_cast<QAbstractButton*>(control); button && button->isCheckable()) {
    focus.words << (button->isChecked() ? QCoreApplication::translate("FocusSpeech", "zaškrtnuto")
                                        : QCoreApplication::translate("FocusSpeech", "nezaškrtnuto"));
  }
  return focus;
}

QAccessibleInterface* FocusedForReader() {
  QWidget* control = QApplication::focusWidget();
  auto* interface = control ? QAccessible::queryAccessibleInterface(control) : nullptr;
  const auto* list = qobject_cast<QAbstractItemView*>(control);
  auto* line = interface && list ? interface->child(list->currentIndex().row()) : nullptr;
  return line ? line : interface;
}

QString WhatIsLeft(const QString& text, QStringList words) {
  std::sort(words.begin(), words.end(), [](const QString& a, const QString& b) { return a.size() > b.size(); });
  QString left = u' ' + text.simplified() + u' ';
  for (const QString& word : words) {
    const QString whole = u' ' + word.simplified();
    if (word.simplified().isEmpty()) continue;
    for (const QString& end : {u" "_qs, u": "_qs}) {
      const qsizetype at = left.indexOf(whole + end);
      if (at >= 0) left.replace(at, whole.size() + end.size(), u" "_qs);
    }
  }
  return left.simplified();
}

}  // namespace talnik
