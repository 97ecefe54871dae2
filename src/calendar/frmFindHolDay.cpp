#include "calendar/frmFindHolDay.h"

#include "shell/cStandardEditBox.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace talnik {

constexpr int FindHolDayTag = 1715;

frmFindHolDay::frmFindHolDay(FormServices& services, QWidget* parent)
    : Form(services, u"frmFindHolDay"_qs, FindHolDayTag, parent),
      Text1(new QLineEdit(this)),
      Command1(new QPushButton(tr("&Hledat"), this)),
      cmdCancel(new QPushButton(tr("Storno"), this)) {
  setWindowTitle(tr("Hledej svátek"));
  auto* label = new QLabel(tr("Jméno:"), this);
  label->setBuddy(Text1);
  NameControl(label, u"Label1"_qs);
  NameControl(Text1, u"Text1"_qs, tr("Jméno"));
  NameControl(Command1, u"Command1"_qs);
  NameControl(cmdCancel, u"cmdCancel"_qs);
  auto* grid = new QGridLayout(this);
  grid->addWidget(label, 0, 0);
  grid->addWidget(Text1, 0, 1);
  grid->addWidget(Command1, 1, 0, 1, 2);
  grid->addWidget(cmdCancel, 2, 0, 1, 2);
  Command1->setDefault(true);

  MakeTextBox(Text1, 0, events(), speech());
  events().GotFocus(Text1, [this, label] { title_.FocusRead(speech(), label->text(), Text1->text()); });
  for (QPushButton* button : {Command1, cmdCancel}) LetButtonSpeak(button, events(), speech(), title_);
  connect(Command1, &QPushButton::clicked, this, [this] {
    searchText_ = Text1->text();
    accept();
  });
  connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

QString frmFindHolDay::Open() {
  searchText_.clear();
  Text1->setFocus();
  title_.Set(windowTitle());
  ShowModal();
  return searchText_;
}

}  // namespace talnik
