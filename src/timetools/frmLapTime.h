#pragma once

#include "platform/CodePage.h"
#include "platform/Registry.h"
#include "shell/FocusSpeech.h"
#include "shell/Form.h"
#include "timetools/StopWatch.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace talnik {

class ListBox;

/// The laps of the stopwatch, to read and to save.
class frmLapTime : public Form {
  Q_OBJECT

 public:
  /// `fields` is the stopwatch's display, saved as the final time.
  frmLapTime(FormServices& services, const QList<Lap>& laps, const StopWatchFields& fields, Registry& registry,
             const CodePage& codePage, QWidget* parent = nullptr);

  /// Shows the window modally.
  void Open();

  ListBox* List1 = nullptr;
  QLabel* Label1 = nullptr;
  QLabel* Label2 = nullptr;
  QLineEdit* Text1 = nullptr;
  QLineEdit* Text2 = nullptr;
  QPushButton* Command1 = nullptr;
  QPushButton* cmdStorno = nullptr;

 private:
  void BuildControls();
  void ConnectList();
  QLineEdit* AddField(QLabel* label, const QString& name);
  void List1_Click();
  void Command1_Click();
  QString SelectedLap() const;

  const QList<Lap>& laps_;
  const StopWatchFields& fields_;
  Registry& registry_;
  const CodePage& codePage_;
  OpeningTitle title_;
};

}  // namespace talnik
