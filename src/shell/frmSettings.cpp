#include "shell/frmSettings.h"

#include "platform/HotKey.h"
#include "shell/ChooseFile.h"
#include "shell/HotKeyText.h"
#include "shell/SettingsValues.h"
#include "shell/Texts.h"
#include "shell/VoiceDialog.h"
#include "shell/cSetting.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QLoggingCategory>
#include <QPushButton>
#include <QStackedWidget>
#include <QTabBar>

#include <utility>

namespace talnik {
namespace {

Q_LOGGING_CATEGORY(settingsTrace, "talnik.trace", QtWarningMsg)

constexpr int SettingsTag = 1721;
constexpr int LastCodeOfNoHotKey = 32;

/// The keys that count a number up and down.
int StepOf(const Key& key) {
  if (key.NumericPlus() || key.Is(Qt::Key_Down)) return 1;
  return key.NumericMinus() || key.Is(Qt::Key_Up) ? -1 : 0;
}

/// What a list stands for; a value that no line stands for is left as it was.
int ValueOf(const QComboBox* list, int before) {
  return list->currentIndex() < 0 ? before : list->currentIndex();
}

}  // namespace

frmSettings::frmSettings(FormServices& services, SettingsHost host, QWidget* parent)
    : Form(services, u"frmSettings"_qs, SettingsTag, parent), host_(std::move(host)) {
  setWindowTitle(tr("Nastavení"));
  BuildControls();
  LoadForm();
  ConnectControls();
}

void frmSettings::LoadForm() {
  const cSetting& setting = services().setting;
  chkStartUp->setChecked(host_.shell.AutostartIsOn());
  txtAlarmSnd->setText(setting.AlarmSndFile);
  txtTimeOutSnd->setText(setting.TimeOutSndFile);
  txtAlarmLoop->setText(QString::number(setting.AlarmLoop));
  txtGoogleLoginName->setText(setting.User);
  txtAutSync->setText(QString::number(setting.AutSync));
  ShowHotKey(setting.HotKeyCall);
  cmbExitMode->setCurrentIndex(setting.ExitMode < cmbExitMode->count() ? setting.ExitMode : -1);
  cmbNewAlarm->setCurrentIndex(setting.AlarmOnNew < cmbNewAlarm->count() ? setting.AlarmOnNew : -1);
  chkRepeatTimeout->setChecked(setting.RepeatTimeout != 0);
  if (!host_.state.OpenGoogleTab) return;
  TabStrip1->setCurrentIndex(GoogleTab);
  pages_->setCurrentIndex(GoogleTab);
}

void frmSettings::Open() {
  title_.Set(windowTitle() + u' ' + TabStrip1->tabText(TabStrip1->currentIndex()));
  FirstOf(TabStrip1->currentIndex())->setFocus();
  ShowModal();
}

// Tabs.

void frmSettings::ConnectTabs() {
  connect(TabStrip1, &QTabBar::currentChanged, this, [this](int tab) { ShowTab(tab); });
  events().FormKeyDown([this](Key& key) {
    if (!key.Is(Qt::Key_Tab) || !(key.shift & Qt::ControlModifier)) return;
    key.Swallow();
    TabStrip1->setCurrentIndex(NextTab(TabStrip1->currentIndex(), !(key.shift & Qt::ShiftModifier)));
  });
}

/// The name of the tab is said ahead of its first control.
void frmSettings::ShowTab(int tab) {
  // Left on a page that hides, the focus would wander through others, each of which would be said.
  TabStrip1->setFocus();
  title_.Set(TabStrip1->tabText(tab));
  pages_->setCurrentIndex(tab);
  FirstOf(tab)->setFocus();
}

QWidget* frmSettings::FirstOf(int tab) const {
  if (tab == GoogleTab) return txtGoogleLoginName;
  return chkStartUp;
}

// The hot key.

void frmSettings::ConnectHotKey() {
  events().GotFocus(txtHotKey, [this] { keyIsHere_ = false; });
  events().KeyDown(txtHotKey, [this](Key&) { keyIsHere_ = true; });
  events().KeyUp(txtHotKey, [this](Key& key) { txtHotKey_KeyUp(key); });
}

/// The key that has brought the user here goes up here too; it is not his choice.
void frmSettings::txtHotKey_KeyUp(Key& key) {
  key.Swallow();
  if (!keyIsHere_ || !txtHotKey->hasFocus()) return;
  const int known = host_.keyboardHook.VirtualKey(key.scanCode);
  const int code = known != 0 ? known : VirtualKeyOf(key);
  const int mask = HotKeyMask(key.shift);
  qCDebug(settingsTrace).noquote() << u"hk.sh %1 , %2"_qs.arg(code).arg(mask);
  if (code > LastCodeOfNoHotKey) ShowHotKey(dw2IntegersToDWORD(code, mask));
  speech().Say(txtHotKey->text());
}

void frmSettings::ShowHotKey(int hotKey) {
  NewHotKey = hotKey;
  txtHotKey->setText(HotKeyText(LowWord(hotKey), HighWord(hotKey)));
}

void frmSettings::cmdDelHotKey_Click() {
  ShowHotKey(0);
  speech().Say(SharedText(TextId::Deleting));
}

// Sounds and numbers.

/// Ahead of the text box, which would say the number as it was.
void frmSettings::ConnectCounting() {
  events().GotFocus(txtAlarmLoop, [this] { keyIsHere_ = false; });
  events().KeyDown(txtAlarmLoop, [this](Key& key) {
    keyIsHere_ = true;
    if (key.text == u"+"_qs || key.NumericPlus() || key.NumericMinus()) key.Swallow();
  });
  events().KeyUp(txtAlarmLoop, [this](Key& key) {
    const int step = StepOf(key);
    if (step == 0 || !keyIsHere_) return;
    key.Swallow();
    txtAlarmLoop->setText(MovedNumber(txtAlarmLoop->text(), step));
    speech().Say(txtAlarmLoop->text());
  });
}

/// Behind the text box, whose words this cuts.
void frmSettings::ConnectNumberSpeech() {
  events().KeyUp(txtAlarmLoop, [this](Key& key) {
    const bool stays = keyIsHere_ && txtAlarmLoop->hasFocus();
    if (!key.Is(Qt::Key_Shift) && stays) speech().Say(txtAlarmLoop->text());
  });
}

void frmSettings::PickSound(QLineEdit* field) {
  const QString folder = services().look.FamilyFolderWithSlash() + u"sound"_qs;
  const QString request = u"*.wav||"_qs + folder + u'|' + SharedText(TextId::Open);
  const QString path = ChooseFile(dialogs(), host_.registry, Dialogs::SoundFile, request);
  if (!path.isEmpty()) field->setText(path);
}

// The end.

SettingsInput frmSettings::Input() const {
  const cSetting& setting = services().setting;
  return {.startUp = chkStartUp->isChecked(),
          .alarmSndFile = txtAlarmSnd->text(),
          .timeOutSndFile = txtTimeOutSnd->text(),
          .alarmLoop = txtAlarmLoop->text(),
          .alarmOnNew = ValueOf(cmbNewAlarm, setting.AlarmOnNew),
          .repeatTimeout = chkRepeatTimeout->isChecked(),
          .newHotKey = NewHotKey,
          .exitMode = ValueOf(cmbExitMode, setting.ExitMode),
          .autSync = txtAutSync->text(),
          .user = txtGoogleLoginName->text(),
          .password = txtGoogleLoginPassword->text(),
          .passwordChanged = PasswordChanged};
}

void frmSettings::cmdOK_Click() {
  const SettingsRefusal refusal = TakeSettings(Input(), services().setting, host_);
  if (refusal.message.isEmpty()) return accept();
  dialogs().Warn(refusal.message);
  GoTo(refusal.control);
}

/// A hot key that cannot be had gives way to the one in force, so that the user is told of it once.
void frmSettings::GoTo(const char* control) {
  auto* target = findChild<QWidget*>(QString::fromLatin1(control));
  if (target == txtHotKey) ShowHotKey(services().setting.HotKeyCall);
  const QSignalBlocker quiet(TabStrip1);
  if (tab1->isAncestorOf(target) || tab2->isAncestorOf(target)) {
    TabStrip1->setCurrentIndex(tab2->isAncestorOf(target) ? GoogleTab : GeneralTab);
    pages_->setCurrentIndex(TabStrip1->currentIndex());
  }
  target->setFocus();
}

}  // namespace talnik
