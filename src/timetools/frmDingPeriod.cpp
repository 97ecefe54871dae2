#include "timetools/frmDingPeriod.h"

#include "shell/ChooseFile.h"
#include "shell/TextControls.h"
#include "shell/Texts.h"
#include "shell/VoiceDialog.h"
#include "shell/cSetting.h"
#include "shell/cStandardEditBox.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace talnik {
namespace {

constexpr int DingPeriodTag = 1714;
constexpr std::size_t PeriodOff = 3;

}  // namespace

frmDingPeriod::frmDingPeriod(FormServices& services, Registry& registry, QWidget* parent)
    : Form(services, u"frmDingPeriod"_qs, DingPeriodTag, parent), registry_(registry) {
  setWindowTitle(tr("Oznamování času"));
  BuildControls();
}

QWidget* frmDingPeriod::BuildPeriods() {
  Frame1 = new QGroupBox(tr("Interval"), this);
  NameControl(Frame1, u"Frame1"_qs);
  auto* column = new QVBoxLayout(Frame1);
  const std::array<QString, 4> captions{tr("Hodina"), tr("Půlhodina"), tr("Čtvrthodina"), tr("Vypnout")};
  for (std::size_t i = 0; i < optPeriod.size(); ++i) {
    optPeriod.at(i) = new QRadioButton(captions.at(i), Frame1);
    NameControl(optPeriod.at(i), u"optPeriod(%1)"_qs.arg(i));
    LetButtonSpeak(optPeriod.at(i), events(), speech(), title_);
    column->addWidget(optPeriod.at(i));
  }
  return Frame1;
}

void frmDingPeriod::BuildControls() {
  auto* grid = new QGridLayout(this);
  grid->addWidget(BuildPeriods(), 0, 0, 1, 2);
  lbSndName = new QLabel(tr("Zvukový soubor:"), this);
  Text1 = new QLineEdit(this);
  cmdBrowse = new QPushButton(tr("Procházet..."), this);
  chkVoice = new QCheckBox(tr("Hlas"), this);
  cmdOK = new QPushButton(SharedText(TextId::OK), this);
  cmdCancel = new QPushButton(tr("Storno"), this);
  NameControl(lbSndName, u"lbSndName"_qs);
  NameControl(Text1, u"Text1"_qs);
  WidenForPath(Text1);
  NameControl(cmdBrowse, u"cmdBrowse"_qs);
  NameControl(chkVoice, u"chkVoice"_qs);
  NameControl(cmdOK, u"cmdOK"_qs);
  NameControl(cmdCancel, u"cmdCancel"_qs);
  lbSndName->setBuddy(Text1);
  grid->addWidget(lbSndName, 1, 0, 1, 2);
  grid->addWidget(Text1, 2, 0);
  grid->addWidget(cmdBrowse, 2, 1);
  grid->addWidget(chkVoice, 3, 0, 1, 2);
  grid->addWidget(cmdOK, 4, 0);
  grid->addWidget(cmdCancel, 4, 1);
  cmdOK->setDefault(true);
  cmdBrowse->setEnabled(static_cast<bool>(dialogs().PickFile));
  for (QAbstractButton* button : std::initializer_list<QAbstractButton*>{cmdBrowse, chkVoice, cmdOK, cmdCancel})
    LetButtonSpeak(button, events(), speech(), title_);

  events().GotFocus(
      Text1, [this] { title_.FocusRead(speech(), QString(), Text1->text(), static_cast<int>(Text1->text().size())); });
  MakeTextBox(Text1, 0, events(), speech());
  connect(cmdBrowse, &QPushButton::clicked, this, [this] { cmdBrowse_Click(); });
  connect(cmdOK, &QPushButton::clicked, this, [this] { cmdOK_Click(); });
  connect(cmdCancel, &QPushButton::clicked, this, [this] { reject(); });
}

QRadioButton* frmDingPeriod::OptionOfSettings() const {
  const cSetting& setting = services().setting;
  if (setting.DingHourly) return optPeriod[0];
  if (setting.DingHalfHourly) return optPeriod[1];
  if (setting.DingQuarterHourly) return optPeriod[2];
  return optPeriod[PeriodOff];
}

void frmDingPeriod::Open() {
  Text1->setText(services().setting.DingFile);
  QRadioButton* chosen = OptionOfSettings();
  chosen->setChecked(true);
  title_.Set(windowTitle());
  chosen->setFocus();
  ShowModal();
}

void frmDingPeriod::cmdBrowse_Click() {
  const QString folder = services().look.FamilyFolderWithSlash() + u"sound"_qs;
  const QString fields = u"*.wav||"_qs + folder + u'|' + SharedText(TextId::Open);
  const QString path = ChooseFile(dialogs(), registry_, Dialogs::SoundFile, fields);
  if (!path.isEmpty()) Text1->setText(path);
}

void frmDingPeriod::cmdOK_Click() {
  cSetting& setting = services().setting;
  setting.DingHourly = setting.DingHalfHourly = setting.DingQuarterHourly = false;
  for (std::size_t i = 0; i < optPeriod.size(); ++i)
    if (optPeriod.at(i)->isChecked()) setting.SetDingPeriod(static_cast<int>(i));
  setting.DingFile = Text1->text();
  accept();
}

}  // namespace talnik
