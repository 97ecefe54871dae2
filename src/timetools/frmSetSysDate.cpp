#include "timetools/frmSetSysDate.h"

#include "shell/FocusSpeech.h"
#include "shell/cStandardEditBox.h"
#include "timetools/SpinTimeField.h"
#include "timetools/SystemClock.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>

#include <utility>

namespace talnik {
namespace {

struct DateField {
  int minimum;
  int maximum;
  int digits;
};

constexpr std::array<DateField, 3> DateFields{{{1, 31, 2}, {1, 12, 2}, {1000, 3000, 4}}};

/// The dialog's window has no number among those that tools outside know.
constexpr int NoTag = 0;

}  // namespace

bool IsLeapYear(int year) {
  return year % 4 == 0 && year % 100 != 0;
}

int MaxDay(int month, int year) {
  switch (month) {
    case 1:
    case 3:
    case 5:
    case 7:
    case 8:
    case 10:
    case 12:
      return 31;
    case 4:
    case 6:
    case 9:
    case 11:
      return 30;
    case 2:
      return IsLeapYear(year) ? 29 : 28;
    default:
      return 0;
  }
}

std::optional<int> FirstWrongDateField(int day, int month, int year) {
  if (day < 1 || day > MaxDay(month, year)) return 0;
  if (month < 1 || month > 12) return 1;
  if (year < 1000 || year > 3000) return 2;
  return {};
}

frmSetSysDate::frmSetSysDate(FormServices& services, std::function<void(const Date&)> showDate, QWidget* parent)
    : Form(services, u"frmSetSysDate"_qs, NoTag, parent), showDate_(std::move(showDate)) {
  BuildControls();
}

void frmSetSysDate::BuildControls() {
  lblDay = new QLabel(tr("&Den:"), this);
  lblMonth = new QLabel(tr("&Měsíc:"), this);
  lblYear = new QLabel(tr("&Rok:"), this);
  NameControl(lblDay, u"lblDay"_qs);
  NameControl(lblMonth, u"lblMonth"_qs);
  NameControl(lblYear, u"lblYear"_qs);
  auto* grid = new QGridLayout(this);
  int row = 0;
  for (QLabel* label : {lblDay, lblMonth, lblYear}) {
    QLineEdit*& edit = Text1.at(static_cast<std::size_t>(row));
    edit = new QLineEdit(this);
    NameControl(edit, u"Text1(%1)"_qs.arg(row));
    label->setBuddy(edit);
    grid->addWidget(label, row, 0);
    grid->addWidget(edit, row, 1);
    ConnectField(label, row++);
  }
  cmdSet = new QPushButton(tr("&Nastav datum"), this);
  cmdCancel = new QPushButton(tr("Storno"), this);
  NameControl(cmdSet, u"cmdSet"_qs);
  NameControl(cmdCancel, u"cmdCancel"_qs);
  grid->addWidget(cmdSet, row++, 0, 1, 2);
  grid->addWidget(cmdCancel, row, 0, 1, 2);
  cmdSet->setDefault(true);
  LetButtonSpeak(cmdSet, events(), speech(), title_);
  LetButtonSpeak(cmdCancel, events(), speech(), title_);
  connect(cmdSet, &QPushButton::clicked, this, [this] { cmdSet_Click(); });
  connect(cmdCancel, &QPushButton::clicked, this, [this] { reject(); });
}

void frmSetSysDate::ConnectField(const QLabel* label, int field) {
  QLineEdit* edit = Text1.at(static_cast<std::size_t>(field));
  const DateField& range = DateFields.at(static_cast<std::size_t>(field));
  edit->setMaxLength(range.digits);

  events().GotFocus(edit, [this, edit, label] {
    const QString text = label->text().remove(u'&') + u' ' + edit->text();
    title_.FocusRead(speech(), QString(), text, static_cast<int>(text.size()));
  });
  // Ahead of the accessible text box, which would read the line at the keys that spin.
  events().KeyDown(edit, [this, edit, range](Key& key) {
    const int step = SpinStep(key);
    if (step == 0) return;
    key.Swallow();
    edit->setText(SpinTimeField(edit->text(), step, range.minimum, range.maximum, SpinFormat::Plain));
    speech().Say(edit->text());
  });
  events().KeyUp(edit, [](Key& key) {
    if (SpinStep(key) != 0) key.Swallow();
  });
  MakeTextBox(edit, 0, events(), speech());
}

void frmSetSysDate::Open() {
  setWindowTitle(SetSystem ? tr("Nastavit datum") : tr("Přejít na den"));
  const Date now = Now();
  Text1[0]->setText(QString::number(now.Day()));
  Text1[1]->setText(QString::number(now.Month()));
  Text1[2]->setText(QString::number(now.Year()));
  title_.Set(windowTitle());
  Text1[0]->setFocus();
  ShowModal();
}

void frmSetSysDate::cmdSet_Click() {
  const int day = FieldValue(Text1[0]->text());
  const int month = FieldValue(Text1[1]->text());
  const int year = FieldValue(Text1[2]->text());
  if (const auto wrong = FirstWrongDateField(day, month, year)) {
    speech().Signal(Speech::Refused);
    return Text1.at(static_cast<std::size_t>(*wrong))->setFocus();
  }
  const auto date = CDate(u"%1.%2.%3"_qs.arg(day).arg(month).arg(year), Now());
  if (!date || settingClock_) return speech().Signal(Speech::Refused);
  if (!SetSystem) {
    showDate_(*date);
    return accept();
  }
  const Date now = Now();
  const auto moment = Date::FromSeconds(date->Seconds() + (now.Seconds() - now.DateValue().Seconds()));
  settingClock_ = true;
  SetSystemClock(services(), moment.value_or(*date), [form = QPointer<frmSetSysDate>(this)] {
    if (form) form->accept();
  });
}

}  // namespace talnik
