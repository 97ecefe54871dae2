#pragma once

#include "platform/Registry.h"
#include "shell/FocusSpeech.h"
#include "shell/Form.h"

#include <array>

class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace talnik {

/// How often the time is announced, and by which sound.
class frmDingPeriod : public Form {
  Q_OBJECT

 public:
  /// The registry hands over the sound that was picked.
  frmDingPeriod(FormServices& services, Registry& registry, QWidget* parent = nullptr);

  /// Shows the window modally with the period and the sound of the settings.
  void Open();

  QGroupBox* Frame1 = nullptr;
  std::array<QRadioButton*, 4> optPeriod{};
  QLabel* lbSndName = nullptr;
  QLineEdit* Text1 = nullptr;
  QPushButton* cmdBrowse = nullptr;
  QCheckBox* chkVoice = nullptr;
  QPushButton* cmdOK = nullptr;
  QPushButton* cmdCancel = nullptr;

 private:
  void BuildControls();
  QWidget* BuildPeriods();
  QRadioButton* OptionOfSettings() const;
  void cmdBrowse_Click();
  void cmdOK_Click();

  Registry& registry_;
  OpeningTitle title_;
};

}  // namespace talnik
