#include "editor/frmSearchRecord.h"

#include "shell/Texts.h"
#include "shell/cStandardEditBox.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace talnik {
namespace {

constexpr int SearchRecordTag = 1718;

/// A moment before every record.
Date BeforeEverything(const Date& today) {
  return CDate(u"1.1.1 1:0:0"_qs, today).value_or(Date());
}

}  // namespace

frmSearchRecord::frmSearchRecord(FormServices& services, EditorState& state, const Date& selectedDay, QWidget* parent)
    : Form(services, u"frmSearchRecord"_qs, SearchRecordTag, parent), state_(state), selectedDay_(selectedDay) {
  setWindowTitle(tr("Hledat záznam"));
  BuildControls();
}

void frmSearchRecord::BuildControls() {
  Text1 = new QLineEdit(this);
  QWidget* options = BuildOptions();
  Command1 = new QPushButton(SharedText(TextId::OK), this);
  Command2 = new QPushButton(SharedText(TextId::Storno), this);
  NameControl(Text1, u"Text1"_qs, windowTitle());
  NameControl(Command1, u"Command1"_qs);
  NameControl(Command2, u"Command2"_qs);
  auto* grid = new QGridLayout(this);
  grid->addWidget(Text1, 0, 0, 1, 2);
  grid->addWidget(options, 1, 0, 1, 2);
  grid->addWidget(Command1, 2, 0);
  grid->addWidget(Command2, 2, 1);
  Command1->setDefault(true);

  MakeTextBox(Text1, 0, events(), speech());
  events().GotFocus(Text1, [this] { title_.FocusRead(speech(), u" "_qs, Text1->text()); });
  for (QPushButton* button : {Command1, Command2}) LetButtonSpeak(button, events(), speech(), title_);
  connect(Command1, &QPushButton::clicked, this, [this] { Command1_Click(); });
  connect(Command2, &QPushButton::clicked, this, [this] { reject(); });
}

QWidget* frmSearchRecord::BuildOptions() {
  Frame1 = new QGroupBox(tr("Hledat"), this);
  NameControl(Frame1, u"Frame1"_qs);
  auto* column = new QVBoxLayout(Frame1);
  const std::array<QString, 2> captions{tr("všechny záznamy"), tr("od aktuálního dne")};
  for (std::size_t i = 0; i < optSearch.size(); ++i) {
    QRadioButton* option = optSearch.at(i) = new QRadioButton(captions.at(i), Frame1);
    NameControl(option, u"optSearch(%1)"_qs.arg(i));
    LetButtonSpeak(option, events(), speech(), title_);
    column->addWidget(option);
  }
  optSearch[0]->setChecked(true);
  return Frame1;
}

void frmSearchRecord::Open() {
  title_.Set(windowTitle());
  Text1->setFocus();
  ShowModal();
}

void frmSearchRecord::Command1_Click() {
  state_.SearchFrom = optSearch[0]->isChecked() ? BeforeEverything(Now()) : selectedDay_;
  state_.SearchText = Text1->text();
  accept();
}

}  // namespace talnik
