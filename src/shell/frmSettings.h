#pragma once

#include "shell/FocusSpeech.h"
#include "shell/Form.h"
#include "shell/TakeSettings.h"

class QCheckBox;
class QComboBox;
class QGridLayout;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QStackedWidget;
class QTabBar;

namespace talnik {

/// The user's settings, on two tabs. Nothing is changed before OK.
class frmSettings : public Form {
  Q_OBJECT

 public:
  frmSettings(FormServices& services, SettingsHost host, QWidget* parent = nullptr);

  /// Shows the window modally with the settings in force.
  void Open();

  QTabBar* TabStrip1 = nullptr;
  QWidget* tab1 = nullptr;
  QWidget* tab2 = nullptr;

  QCheckBox* chkStartUp = nullptr;
  QLabel* lblHotKey = nullptr;
  QLineEdit* txtHotKey = nullptr;
  QPushButton* cmdDelHotKey = nullptr;
  QLabel* lblAlarmLoop = nullptr;
  QLineEdit* txtAlarmLoop = nullptr;
  QLabel* lblAlarmSnd = nullptr;
  QLineEdit* txtAlarmSnd = nullptr;
  QPushButton* cmdAlarmSnd = nullptr;
  QLabel* lblNewAlarm = nullptr;
  QComboBox* cmbNewAlarm = nullptr;
  QComboBox* cmbExitMode = nullptr;
  QLabel* lblTimeOutSnd = nullptr;
  QLineEdit* txtTimeOutSnd = nullptr;
  QPushButton* cmdTimeOutSnd = nullptr;
  QCheckBox* chkRepeatTimeout = nullptr;

  QLabel* lblGoogleLoginName = nullptr;
  QLineEdit* txtGoogleLoginName = nullptr;
  QLabel* lblGoogleLoginPassword = nullptr;
  QLineEdit* txtGoogleLoginPassword = nullptr;
  QLabel* lblAutSync = nullptr;
  QLineEdit* txtAutSync = nullptr;

  QPushButton* cmdOK = nullptr;
  QPushButton* cmdCancel = nullptr;

 private:
  // Controls (frmSettingsControls.cpp).
  void BuildControls();
  void BuildGeneral();
  void BuildGoogle();
  void BuildButtons(QGridLayout* grid);
  QCheckBox* MakeCheck(QWidget* tab, const char* name, const QString& caption);
  QLineEdit* MakeField(QWidget* tab, const char* name, QLabel*& label, const QString& caption,
                       QPushButton* beside = nullptr);
  QComboBox* MakeList(QWidget* tab, const char* name, QLabel* label, const QStringList& lines);
  QPushButton* MakeButton(QWidget* parent, const char* name, const QString& caption);
  void ReadOnFocus(QLineEdit* field, const QLabel* label);

  void LoadForm();
  void ConnectControls();
  void ConnectHotKey();
  void ConnectCounting();
  void ConnectNumberSpeech();
  void ConnectTabs();
  void ShowTab(int tab);
  QWidget* FirstOf(int tab) const;
  void txtHotKey_KeyUp(Key& key);
  void cmdDelHotKey_Click();
  void PickSound(QLineEdit* field);
  void ShowHotKey(int hotKey);
  SettingsInput Input() const;
  void cmdOK_Click();
  void GoTo(const char* control);

  SettingsHost host_;
  OpeningTitle title_;
  QStackedWidget* pages_ = nullptr;
  int NewHotKey = 0;
  bool PasswordChanged = false;
  bool keyIsHere_ = false;  ///< the key that goes up has gone down in this field
};

}  // namespace talnik
