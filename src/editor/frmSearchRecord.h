#pragma once

#include "editor/EditorState.h"
#include "shell/FocusSpeech.h"
#include "shell/Form.h"

#include <array>

class QGroupBox;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace talnik {

/// Asks for a text whose records the editor is to browse.
class frmSearchRecord : public Form {
  Q_OBJECT

 public:
  /// The answer goes to SearchText, which is left as it is when the user gives up, and SearchFrom. `selectedDay` is
  /// that of the month list.
  frmSearchRecord(FormServices& services, EditorState& state, const Date& selectedDay, QWidget* parent = nullptr);

  /// Shows the window modally.
  void Open();

  QLineEdit* Text1 = nullptr;
  QGroupBox* Frame1 = nullptr;
  std::array<QRadioButton*, 2> optSearch{};  ///< 0 all records, 1 from the selected day
  QPushButton* Command1 = nullptr;
  QPushButton* Command2 = nullptr;

 private:
  void BuildControls();
  QWidget* BuildOptions();
  void Command1_Click();

  EditorState& state_;
  Date selectedDay_;
  OpeningTitle title_;
};

}  // namespace talnik
