#pragma once

#include "dates/Date.h"
#include "shell/ControlEvents.h"
#include "shell/FormServices.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QPushButton;

namespace talnik {

/// The base of every dialog of the program: colours and large type of the common settings, the window's number, the
/// order of events, and the accessible name of its controls.
class Form : public QDialog {
  Q_OBJECT

 public:
  /// `name` is the object name ("frmSchedule"), `tag` the window's number.
  Form(FormServices& services, const QString& name, int tag, QWidget* parent = nullptr);

  int Tag() const;

  /// Reads the control that has the focus once more.
  void ReadAgain() { events_.ComeBack(); }

 protected:
  void SetTag(int tag);

  /// Shows the window modally, large enough for its type and at most as large as the screen.
  int ShowModal();
  /// The same without waiting for its end; how far it is modal is set before.
  void ShowAndGoOn();
  /// Takes the size that the controls want now, in the middle of the screen.
  void FitToScreen();
  bool event(QEvent* event) override;

  Speech& speech() const { return services_.speech; }
  Dialogs& dialogs() const { return services_.dialogs; }
  Date Now() const { return Date::FromQDateTime(services_.clock.Now()); }
  ControlEvents& events() { return events_; }
  FormServices& services() const { return services_; }

 private:
  void TakeRoom();
  void StayInRoom();

  FormServices& services_;
  ControlEvents events_;
  bool takesRoom_ = false;
};

/// Gives a control its object name and, where it has no label of its own, its accessible name.
void NameControl(QWidget* control, const QString& objectName, const QString& accessibleName = QString());

/// Gives a combo box that stands without a label the name that screen readers say. Its accessible name would not do:
/// they are told its value instead, and its label beside it.
void LabelUnseen(QComboBox* list, const QString& name);

/// The fixed child identifier of a control, for tools outside.
void SetControlId(QWidget* control, int id);
/// The number of a window, for tools outside.
void SetFormTag(QWidget* window, int tag);

/// The colour of what is not available: as far from `fore` towards `back` as reads well still.
QColor SubduedColor(const QColor& fore, const QColor& back);

/// Paints a window and its controls in the colours of the common settings, in "Arial" of `points`. A control whose type
/// is to differ gets it by SetTypeSize, behind this call.
void ApplyLook(QWidget* window, const CommonSettings& look, int points);

/// The size of one control's type, in points; it holds against the look of the window.
void SetTypeSize(QWidget* control, int points);

}  // namespace talnik
