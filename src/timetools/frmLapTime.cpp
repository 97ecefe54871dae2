#include "timetools/frmLapTime.h"

#include "platform/WholeFile.h"
#include "shell/ChooseFile.h"
#include "shell/TextControls.h"
#include "shell/Texts.h"
#include "shell/VoiceDialog.h"
#include "shell/cStandardEditBox.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace talnik {
namespace {

constexpr int LapTimeTag = 1716;
constexpr int LapFieldFlags = 2;

}  // namespace

frmLapTime::frmLapTime(FormServices& services, const QList<Lap>& laps, const StopWatchFields& fields,
                       Registry& registry, const CodePage& codePage, QWidget* parent)
    : Form(services, u"frmLapTime"_qs, LapTimeTag, parent),
      laps_(laps),
      fields_(fields),
      registry_(registry),
      codePage_(codePage) {
  setWindowTitle(tr("Mezičasy"));
  BuildControls();
  ConnectList();
  for (const Lap& lap : laps_) List1->addItem(QString::number(lap.LapIndex));
  title_.Set(windowTitle());
  List1->SetListIndex(laps_.isEmpty() ? -1 : 0);
}

void frmLapTime::BuildControls() {
  auto* column = new QVBoxLayout(this);
  List1 = new ListBox(this);
  NameControl(List1, u"List1"_qs, windowTitle());
  column->addWidget(List1);
  Label1 = new QLabel(tr("Mezičas:"), this);
  Label2 = new QLabel(tr("Rozdílový mezičas:"), this);
  NameControl(Label1, u"Label1"_qs);
  NameControl(Label2, u"Label2"_qs);
  Text1 = AddField(Label1, u"Text1"_qs);
  Text2 = AddField(Label2, u"Text2"_qs);
  Command1 = new QPushButton(tr("Uložit do souboru..."), this);
  cmdStorno = new QPushButton(tr("Storno"), this);
  NameControl(Command1, u"Command1"_qs);
  NameControl(cmdStorno, u"cmdStorno"_qs);
  Command1->setAutoDefault(true);
  Command1->setEnabled(static_cast<bool>(dialogs().PickFile));
  for (QPushButton* button : {Command1, cmdStorno}) {
    column->addWidget(button);
    LetButtonSpeak(button, events(), speech(), title_);
  }
  connect(Command1, &QPushButton::clicked, this, [this] { Command1_Click(); });
  connect(cmdStorno, &QPushButton::clicked, this, [this] { reject(); });
}

QLineEdit* frmLapTime::AddField(QLabel* label, const QString& name) {
  auto* edit = new QLineEdit(this);
  edit->setReadOnly(true);
  NameControl(edit, name);
  label->setBuddy(edit);
  layout()->addWidget(label);
  layout()->addWidget(edit);
  events().GotFocus(edit, [this, edit, label] { title_.FocusRead(speech(), label->text(), edit->text()); });
  MakeTextBox(edit, LapFieldFlags, events(), speech());
  return edit;
}

void frmLapTime::ConnectList() {
  connect(List1, &ListBox::Click, this, [this] { List1_Click(); });
  events().GotFocus(List1, [this] {
    title_.FocusRead(speech(), QString(), SelectedLap());
    if (laps_.isEmpty()) speech().Signal(Speech::EmptyField);
  });
  events().KeyDown(List1, [this](Key& key) {
    const bool pastStart = key.Is(Qt::Key_Up) && List1->ListIndex() <= 0;
    const bool pastEnd = key.Is(Qt::Key_Down) && List1->ListIndex() >= List1->ListCount() - 1;
    if (pastStart || pastEnd) speech().Signal(Speech::EndOfList);
  });
}

void frmLapTime::Open() {
  List1->setFocus();
  ShowModal();
}

QString frmLapTime::SelectedLap() const {
  return List1->Text().isEmpty() ? QString() : QString(List1->Text() + u' ' + Text1->text());
}

void frmLapTime::List1_Click() {
  const Lap& lap = laps_.at(List1->ListIndex());
  Text1->setText(TimeText(lap.LapTime));
  Text2->setText(TimeText(lap.LapDelta));
  if (List1->hasFocus()) speech().Say(SelectedLap());
}

void frmLapTime::Command1_Click() {
  const QString path = ChooseFile(dialogs(), registry_, Dialogs::SaveFile, u"*.*|||"_qs + SharedText(TextId::Save));
  if (path.isEmpty()) return;
  QString reason;
  if (!WriteWholeFile(path, codePage_.Encode(LapFileText(laps_, fields_)), Readers::AsUsual, reason))
    dialogs().Warn(tr("Soubor se nepodařilo uložit: ") + path + u'\n' + reason);
}

}  // namespace talnik
