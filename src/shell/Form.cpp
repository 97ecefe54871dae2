#include "shell/Form.h"

#include "shell/FitWindow.h"

#include <QComboBox>
#include <QEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QLayout>
#include <QPointer>
#include <QVariant>

#include <algorithm>
#include <cmath>

namespace talnik {

namespace {

constexpr int FormPoints = 20;

double Luminance(const QColor& color) {
  const auto linear = [](double part) {
    return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double Contrast(const QColor& one, const QColor& other) {
  const double a = Luminance(one);
  const double b = Luminance(other);
  return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

/// Desktops shorten a title that is wider than its window. In what type they write it they do not tell; hardly in a
/// larger one than ours.
int WidthForTitle(const QWidget& window) {
  constexpr int buttons = 130;
  return window.fontMetrics().horizontalAdvance(window.windowTitle()) + buttons;
}

QString LookSheet(const CommonSettings& look, int points) {
  // A disabled control is told by its dashed frame too, the focus by the exchanged colours or a thick frame.
  const QString sheet =
      uR"(
    QWidget { background-color: %back; color: %fore; font-family: "Arial"; font-size: %sizept; }
    QWidget:disabled { color: %dim; }
    QLineEdit, QPlainTextEdit, QListView, QComboBox, QAbstractSpinBox, QPushButton {
      border: 2px solid %fore; padding: 3px; selection-background-color: %fore; selection-color: %back; }
    QLineEdit:focus, QPlainTextEdit:focus, QListView:focus, QComboBox:focus, QAbstractSpinBox:focus {
      border: 5px solid %fore; padding: 0; }
    QPushButton { padding: 4px 14px; }
    QPushButton:focus { background-color: %fore; color: %back; border: 5px double %back; }
    QLineEdit:disabled, QPlainTextEdit:disabled, QListView:disabled, QComboBox:disabled, QAbstractSpinBox:disabled,
    QPushButton:disabled { border: 2px dashed %dim; }
    QListView::item:selected { background-color: %fore; color: %back; }
    QComboBox QAbstractItemView { border: 2px solid %fore; selection-background-color: %fore; selection-color: %back; }
    QCheckBox, QRadioButton { padding: 3px; border: 2px solid %back; outline: none; }
    QCheckBox:focus, QRadioButton:focus { padding: 0; border: 5px solid %fore; }
    QCheckBox::indicator, QRadioButton::indicator { width: 22px; height: 22px; border: 3px solid %fore;
      background-color: %back; }
    QRadioButton::indicator { border-radius: 14px; }
    QCheckBox::indicator:checked, QRadioButton::indicator:checked { background-color: %fore; }
    QCheckBox::indicator:disabled, QRadioButton::indicator:disabled { border: 3px dashed %dim; }
    QGroupBox { border: 2px solid %fore; margin-top: 1em; padding-top: 10px; }
    QGroupBox::title { subcontrol-origin: margin; left: 12px; padding: 0 6px; }
    QGroupBox:disabled { border: 2px dashed %dim; }
    QTabBar::tab { border: 2px solid %fore; padding: 4px 14px; }
    QTabBar::tab:selected { background-color: %fore; color: %back; }
    QToolTip { background-color: %back; color: %fore; border: 2px solid %fore; }
    QScrollBar { background-color: %back; border: 1px solid %fore; }
    QScrollBar::handle { background-color: %fore; }
  )"_qs;
  return QString(sheet)
      .replace(u"%back"_qs, look.BackColor.name())
      .replace(u"%fore"_qs, look.ForeColor.name())
      .replace(u"%dim"_qs, SubduedColor(look.ForeColor, look.BackColor).name())
      .replace(u"%size"_qs, QString::number(points));
}

}  // namespace

Form::Form(FormServices& services, const QString& name, int tag, QWidget* parent)
    : QDialog(parent), services_(services), events_(this) {
  setObjectName(name);
  SetTag(tag);
  ApplyLook(this, services.look, FormPoints);
}

int Form::Tag() const {
  return property("windowTag").toInt();
}

void Form::SetTag(int tag) {
  SetFormTag(this, tag);
}

int Form::ShowModal() {
  TakeRoom();
  const QPointer<QWidget> owner = parentWidget() ? parentWidget()->window() : nullptr;
  const int result = exec();
  // Where several windows close one after the other, the desktop may leave the keyboard to none of ours.
  if (owner && owner->isVisible() && !owner->isMinimized()) owner->activateWindow();
  return result;
}

void Form::ShowAndGoOn() {
  TakeRoom();
  show();
}

void Form::TakeRoom() {
  ensurePolished();
  if (layout()) FitIntoRoom(*this);
  FitToScreen();
  takesRoom_ = true;
}

bool Form::event(QEvent* event) {
  const bool done = QDialog::event(event);
  if (event->type() == QEvent::LayoutRequest && takesRoom_ && isVisible()) StayInRoom();
  return done;
}

/// The toolkit lets a window grow with its controls, over the edges of the screen too.
void Form::StayInRoom() {
  const QRect room = RoomOnScreen(*this);
  FitIntoRoom(*this);
  if (isMaximized() || isFullScreen()) return;
  resize(WithRoomForText(*this, size()));
  QRect place(pos(), size());
  place.moveRight(std::min(place.right(), room.right()));
  place.moveBottom(std::min(place.bottom(), room.bottom()));
  place.moveLeft(std::max(place.left(), room.left()));
  place.moveTop(std::max(place.top(), room.top()));
  if (place.topLeft() != pos()) move(place.topLeft());
}

void Form::FitToScreen() {
  const QRect room = RoomOnScreen(*this);
  const QSize wanted = sizeHint().expandedTo(size()).expandedTo({WidthForTitle(*this), 0});
  resize(layout() ? WithRoomForText(*this, wanted) : wanted.boundedTo(room.size()));
  move(room.center() - rect().center());
}

void NameControl(QWidget* control, const QString& objectName, const QString& accessibleName) {
  control->setObjectName(objectName);
  if (!accessibleName.isEmpty()) control->setAccessibleName(accessibleName);
}

void LabelUnseen(QComboBox* list, const QString& name) {
  auto* label = new QLabel(name, list->parentWidget());
  label->setBuddy(list);
  label->hide();
}

void SetControlId(QWidget* control, int id) {
  control->setProperty("controlId", id);
}

void SetFormTag(QWidget* window, int tag) {
  window->setProperty("windowTag", tag);
}

QColor SubduedColor(const QColor& fore, const QColor& back) {
  constexpr double readable = 7.0;
  for (int percent = 50; percent > 0; percent -= 5) {
    const auto mix = [percent](int a, int b) { return a + (b - a) * percent / 100; };
    const QColor mixed(mix(fore.red(), back.red()), mix(fore.green(), back.green()), mix(fore.blue(), back.blue()));
    if (Contrast(mixed, back) >= readable) return mixed;
  }
  return fore;
}

void ApplyLook(QWidget* window, const CommonSettings& look, int points) {
  // Lets a control that is given a font of its own keep it against the sheet.
  QCoreApplication::setAttribute(Qt::AA_UseStyleSheetPropagationInWidgetStyles);
  window->setStyleSheet(LookSheet(look, points));
}

void SetTypeSize(QWidget* control, int points) {
  // Before the sheet has been applied, it would take the font away again.
  control->ensurePolished();
  QFont font = control->font();
  font.setPointSize(points);
  control->setFont(font);
}

}  // namespace talnik
