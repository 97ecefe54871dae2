#include "shell/SettingsValues.h"
#include "shell/TextControls.h"
#include "shell/Texts.h"
#include "shell/VoiceDialog.h"
#include "shell/cStandardEditBox.h"
#include "shell/frmSettings.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QTabBar>

namespace talnik {
namespace {

/// What is longer could not be read back.
constexpr int LongestEntry = 1023;

constexpr int OrdinaryText = 0;
constexpr int PasswordText = 3;

QWidget* MakeTab(QStackedWidget* pages, const QString& name) {
  auto* tab = new QWidget;
  NameControl(tab, name);
  pages->addWidget(tab);
  auto* grid = new QGridLayout(tab);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setColumnStretch(1, 1);
  return tab;
}

QGridLayout* GridOf(QWidget* tab) {
  return static_cast<QGridLayout*>(tab->layout());
}

}  // namespace

void frmSettings::BuildControls() {
  auto* grid = new QGridLayout(this);
  TabStrip1 = new QTabBar(this);
  NameControl(TabStrip1, u"TabStrip1"_qs);
  TabStrip1->setFocusPolicy(Qt::NoFocus);
  TabStrip1->setDrawBase(false);
  for (const QString& name : SettingsTabNames()) TabStrip1->addTab(name);
  pages_ = new QStackedWidget(this);
  tab1 = MakeTab(pages_, u"tab1"_qs);
  tab2 = MakeTab(pages_, u"tab2"_qs);
  grid->addWidget(TabStrip1, 0, 0, 1, 2);
  grid->addWidget(pages_, 1, 0, 1, 2);
  grid->setRowStretch(1, 1);
  BuildGeneral();
  BuildGoogle();
  BuildButtons(grid);
}

void frmSettings::BuildGeneral() {
  QGridLayout* grid = GridOf(tab1);
  chkStartUp = MakeCheck(tab1, "chkStartUp", tr("Spustit po startu"));
  txtHotKey = MakeField(tab1, "txtHotKey", lblHotKey, tr("Horká klávesa:"));
  cmdDelHotKey = MakeButton(tab1, "cmdDelHotKey", tr("Smazat horkou klávesu"));
  grid->addWidget(cmdDelHotKey, grid->rowCount(), 0, 1, 3);
  txtAlarmLoop = MakeField(tab1, "txtAlarmLoop", lblAlarmLoop, tr("Opakovat zvuk alarmu (0 = stále)"));
  // The longest of the labels before the shortest of the values.
  grid->removeWidget(lblAlarmLoop);
  grid->removeWidget(txtAlarmLoop);
  grid->addWidget(lblAlarmLoop, grid->rowCount() - 1, 0, 1, 2);
  grid->addWidget(txtAlarmLoop, grid->rowCount() - 1, 2);
  cmdAlarmSnd = MakeButton(tab1, "cmdAlarmSnd", tr("Procházet..."));
  txtAlarmSnd = MakeField(tab1, "txtAlarmSnd", lblAlarmSnd, tr("Zvuk alarmu:"), cmdAlarmSnd);
  lblNewAlarm = new QLabel(tr("Alarm pro nový záznam:"), tab1);
  NameControl(lblNewAlarm, u"lblNewAlarm"_qs);
  cmbNewAlarm = MakeList(tab1, "cmbNewAlarm", lblNewAlarm, NewAlarmTexts());
  cmbExitMode = MakeList(tab1, "cmbExitMode", nullptr, ExitModeTexts());
  LabelUnseen(cmbExitMode, tr("Chování při uzavření"));
  cmdTimeOutSnd = MakeButton(tab1, "cmdTimeOutSnd", tr("Procházet..."));
  txtTimeOutSnd = MakeField(tab1, "txtTimeOutSnd", lblTimeOutSnd, tr("Zvuk pro minutník:"), cmdTimeOutSnd);
  chkRepeatTimeout = MakeCheck(tab1, "chkRepeatTimeout", tr("Opakovat zvuk minutníku"));
  for (QLineEdit* field : {txtAlarmSnd, txtTimeOutSnd}) WidenForPath(field);
  grid->setRowStretch(grid->rowCount(), 1);
  // The combination is shown, not typed.
  txtHotKey->setReadOnly(true);
  const std::pair<QWidget*, int> ids[] = {{chkStartUp, 7},     {txtHotKey, 2},        {cmdDelHotKey, 1},
                                          {txtAlarmLoop, 6},   {txtAlarmSnd, 5},      {cmdAlarmSnd, 4},
                                          {cmbNewAlarm, 3},    {cmbExitMode, 10},     {txtTimeOutSnd, 14},
                                          {cmdTimeOutSnd, 15}, {chkRepeatTimeout, 16}};
  for (const auto& [control, id] : ids) SetControlId(control, id);
}

void frmSettings::BuildGoogle() {
  txtGoogleLoginName = MakeField(tab2, "txtGoogleLoginName", lblGoogleLoginName, tr("Jméno pro přihlášení:"));
  txtGoogleLoginPassword =
      MakeField(tab2, "txtGoogleLoginPassword", lblGoogleLoginPassword, tr("Heslo pro přihlášení:"));
  txtAutSync = MakeField(tab2, "txtAutSync", lblAutSync, tr("Čas automatické synchronizace:"));
  WidenForPath(txtGoogleLoginName);
  GridOf(tab2)->setRowStretch(GridOf(tab2)->rowCount(), 1);
  txtGoogleLoginPassword->setEchoMode(QLineEdit::Password);
  SetControlId(txtGoogleLoginName, 11);
  SetControlId(txtGoogleLoginPassword, 12);
  SetControlId(txtAutSync, 13);
}

void frmSettings::BuildButtons(QGridLayout* grid) {
  cmdOK = MakeButton(this, "cmdOK", tr("OK"));
  cmdCancel = MakeButton(this, "cmdCancel", tr("Storno"));
  cmdOK->setDefault(true);
  SetControlId(cmdOK, 9);
  SetControlId(cmdCancel, 8);
  grid->addWidget(cmdOK, 2, 0);
  grid->addWidget(cmdCancel, 2, 1);
}

QCheckBox* frmSettings::MakeCheck(QWidget* tab, const char* name, const QString& caption) {
  auto* check = new QCheckBox(caption, tab);
  NameControl(check, QString::fromLatin1(name));
  LetButtonSpeak(check, events(), speech(), title_);
  GridOf(tab)->addWidget(check, GridOf(tab)->rowCount(), 0, 1, 3);
  return check;
}

QLineEdit* frmSettings::MakeField(QWidget* tab, const char* name, QLabel*& label, const QString& caption,
                                  QPushButton* beside) {
  const QString fieldName = QString::fromLatin1(name);
  label = new QLabel(caption, tab);
  NameControl(label, u"lbl"_qs + fieldName.mid(3));
  auto* field = new QLineEdit(tab);
  NameControl(field, fieldName);
  field->setMaxLength(LongestEntry);
  label->setBuddy(field);
  QGridLayout* grid = GridOf(tab);
  const int row = grid->rowCount();
  grid->addWidget(label, row, 0);
  grid->addWidget(field, row, 1, 1, beside ? 1 : 2);
  if (beside) {
    grid->addWidget(beside, row, 2);
    setTabOrder(field, beside);
  }
  connect(field, &QLineEdit::inputRejected, this, [this] { speech().Signal(Speech::Refused); });
  return field;
}

QComboBox* frmSettings::MakeList(QWidget* tab, const char* name, QLabel* label, const QStringList& lines) {
  auto* list = new QComboBox(tab);
  NameControl(list, QString::fromLatin1(name));
  list->addItems(lines);
  LetListSpeak(list, label, events(), speech(), title_);
  QGridLayout* grid = GridOf(tab);
  const int row = grid->rowCount();
  if (!label) {
    grid->addWidget(list, row, 0, 1, 3);
    return list;
  }
  label->setBuddy(list);
  grid->addWidget(label, row, 0);
  grid->addWidget(list, row, 1, 1, 2);
  return list;
}

QPushButton* frmSettings::MakeButton(QWidget* parent, const char* name, const QString& caption) {
  auto* button = new QPushButton(caption, parent);
  NameControl(button, QString::fromLatin1(name));
  LetButtonSpeak(button, events(), speech(), title_);
  return button;
}

void frmSettings::ReadOnFocus(QLineEdit* field, const QLabel* label) {
  events().GotFocus(field, [this, field, label] {
    // A password is read as it is shown, a star for each character.
    const bool hidden = field->echoMode() != QLineEdit::Normal;
    const QString text = hidden ? QString(field->text().size(), u'*') : field->text();
    title_.FocusRead(speech(), label->text(), text, static_cast<int>(text.size()));
  });
}

void frmSettings::ConnectControls() {
  const std::pair<QLineEdit*, const QLabel*> fields[] = {{txtHotKey, lblHotKey},
                                                         {txtAlarmLoop, lblAlarmLoop},
                                                         {txtAlarmSnd, lblAlarmSnd},
                                                         {txtTimeOutSnd, lblTimeOutSnd},
                                                         {txtGoogleLoginName, lblGoogleLoginName},
                                                         {txtGoogleLoginPassword, lblGoogleLoginPassword},
                                                         {txtAutSync, lblAutSync}};
  for (const auto& [field, label] : fields) ReadOnFocus(field, label);
  // Ahead of the text boxes: what these two fields make of a key is not what a cursor does.
  ConnectHotKey();
  ConnectCounting();
  for (const auto& [field, label] : fields) {
    MakeTextBox(field, field == txtGoogleLoginPassword ? PasswordText : OrdinaryText, events(), speech());
  }
  ConnectNumberSpeech();
  ConnectTabs();
  connect(txtGoogleLoginPassword, &QLineEdit::textChanged, this, [this] { PasswordChanged = true; });
  connect(cmdDelHotKey, &QPushButton::clicked, this, [this] { cmdDelHotKey_Click(); });
  connect(cmdAlarmSnd, &QPushButton::clicked, this, [this] { PickSound(txtAlarmSnd); });
  connect(cmdTimeOutSnd, &QPushButton::clicked, this, [this] { PickSound(txtTimeOutSnd); });
  connect(cmdOK, &QPushButton::clicked, this, [this] { cmdOK_Click(); });
  connect(cmdCancel, &QPushButton::clicked, this, [this] { reject(); });
  connect(this, &QDialog::rejected, this, [this] { host_.state.SettingsCancelled = true; });
}

}  // namespace talnik
