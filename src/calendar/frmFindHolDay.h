#pragma once

#include "shell/FocusSpeech.h"
#include "shell/Form.h"

class QLineEdit;
class QPushButton;

namespace talnik {

/// Asks for a name whose day is to be found.
class frmFindHolDay : public Form {
  Q_OBJECT

 public:
  explicit frmFindHolDay(FormServices& services, QWidget* parent = nullptr);

  /// Shows the window modally and returns the text; empty when nothing is to be searched for.
  QString Open();

  QLineEdit* Text1;
  QPushButton* Command1;
  QPushButton* cmdCancel;

 private:
  OpeningTitle title_;
  QString searchText_;
};

}  // namespace talnik
