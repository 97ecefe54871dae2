#include "recurrence/frmRepeat.h"

#include "shell/Texts.h"
#include "shell/cStandardEditBox.h"
#include "timetools/PickDate.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include <algorithm>

namespace talnik {

namespace {

constexpr int kRepeatTag = 1724;
constexpr int kWeekly = 1;
constexpr int kMonthly = 2;
constexpr int kMost = 30;  ///< of intervals and of occurrences in the lists

QStringList Numbers() {
  QStringList lines;
  for (int number = 1; number <= kMost; ++number) lines << QString::number(number);
  return lines;
}

/// Monday is 2 and Sunday, the last box, is 1.
int WeekdayOfBox(std::size_t box) {
  return static_cast<int>(box + 1) % 7 + 1;
}

}  // namespace

frmRepeat::frmRepeat(FormServices& services, const CalendarNames& names, RepeatState& state, QWidget* parent)
    : Form(services, u"frmRepeat"_qs, kRepeatTag, parent), names_(names), state_(state) {
  setWindowTitle(tr("Zopakovat"));
  start_ = CDate(state_.Repeat_StartTime, Now()).value_or(Now());
  BuildControls();
  LoadForm();
}

void frmRepeat::Run() {
  title_.Set(windowTitle());
  cmbTimeUnit->setFocus();
  ShowModal();
}

// Controls, in the order in which Tab walks through them.

void frmRepeat::BuildControls() {
  auto* grid = new QGridLayout(this);
  lblTimeUnit = new QLabel(tr("Opakuje se:"), this);
  NameControl(lblTimeUnit, u"lblTimeUnit"_qs);
  cmbTimeUnit = MakeList(lblTimeUnit, "cmbTimeUnit", {tr("Denně"), tr("Týdně"), tr("Měsíčně"), tr("Ročně")});
  Label2 = new QLabel(tr("Zopakovat po:"), this);
  NameControl(Label2, u"Label2"_qs);
  cmbUnits = MakeList(Label2, "cmbUnits", Numbers());
  grid->addWidget(lblTimeUnit, 0, 0);
  grid->addWidget(cmbTimeUnit, 0, 1);
  grid->addWidget(Label2, 1, 0);
  grid->addWidget(cmbUnits, 1, 1);
  BuildDays(grid);
  BuildMonth(grid);
  BuildEnd(grid);
  BuildButtons(grid);
  connect(cmbTimeUnit, &QComboBox::currentIndexChanged, this, [this] { cmbTimeUnit_Click(); });
}

void frmRepeat::BuildDays(QGridLayout* grid) {
  // The spelling of the names is what tools outside know them by.
  static constexpr std::array<const char*, 7> names = {"chkDayMO", "ChkDayTU", "chkDayWE", "ChkDayTH",
                                                       "ChkDayFR", "chkDaySA", "ChkDaySU"};
  const std::array<QString, 7> captions{tr("Pondělí"), tr("Úterý"),  tr("Středa"), tr("Čtvrtek"),
                                        tr("Pátek"),   tr("Sobota"), tr("Neděle")};
  frmDays = new QGroupBox(tr("Dny"), this);
  NameControl(frmDays, u"frmDays"_qs);
  auto* boxes = new QGridLayout(frmDays);
  for (std::size_t i = 0; i < chkDay.size(); ++i) {
    chkDay.at(i) = new QCheckBox(captions.at(i), frmDays);
    NameControl(chkDay.at(i), QString::fromLatin1(names.at(i)));
    LetButtonSpeak(chkDay.at(i), events(), speech(), title_);
    boxes->addWidget(chkDay.at(i), static_cast<int>(i) / 4, static_cast<int>(i) % 4);
  }
  grid->addWidget(frmDays, 2, 0, 1, 2);
}

QRadioButton* frmRepeat::MakeOption(const QString& name, const QString& caption, QWidget* frame) {
  auto* option = new QRadioButton(caption, frame);
  NameControl(option, name);
  LetButtonSpeak(option, events(), speech(), title_);
  frame->layout()->addWidget(option);
  return option;
}

void frmRepeat::BuildMonth(QGridLayout* grid) {
  frmMonth = new QGroupBox(tr("Měsíc"), this);
  NameControl(frmMonth, u"frmMonth"_qs);
  new QHBoxLayout(frmMonth);
  optMonthDay[0] = MakeOption(u"optMonthDay(0)"_qs, tr("Den v měsíci"), frmMonth);
  optMonthDay[1] = MakeOption(u"optMonthDay(1)"_qs, tr("Den v týdnu"), frmMonth);
  grid->addWidget(frmMonth, 3, 0, 1, 2);
}

void frmRepeat::BuildEnd(QGridLayout* grid) {
  frmEnd = new QGroupBox(tr("Konec"), this);
  NameControl(frmEnd, u"frmEnd"_qs);
  new QVBoxLayout(frmEnd);
  const std::array<QString, 3> captions{tr("Opakovat bez omezení"), tr("Počet událostí"), tr("Koncové datum")};
  for (std::size_t i = 0; i < optEnd.size(); ++i) {
    optEnd.at(i) = MakeOption(u"optEnd(%1)"_qs.arg(i), captions.at(i), frmEnd);
    connect(optEnd.at(i), &QRadioButton::toggled, this, [this, i](bool checked) {
      if (checked) optEnd_Click(static_cast<int>(i));
    });
  }
  grid->addWidget(frmEnd, 4, 0, 1, 2);

  Label1 = new QLabel(tr("Počet událostí:"), this);
  NameControl(Label1, u"Label1"_qs);
  cmbNumber = MakeList(Label1, "cmbNumber", Numbers());
  Label3 = new QLabel(tr("Koncové datum:"), this);
  NameControl(Label3, u"Label3"_qs);
  txtDeadLine = new QLineEdit(this);
  NameControl(txtDeadLine, u"txtDeadLine"_qs);
  Label3->setBuddy(txtDeadLine);
  events().GotFocus(txtDeadLine, [this] {
    const QString text = txtDeadLine->text();
    title_.FocusRead(speech(), Label3->text(), text, static_cast<int>(text.size()));
  });
  MakeTextBox(txtDeadLine, 0, events(), speech());
  connect(txtDeadLine, &QLineEdit::textChanged, this, [this] { txtDeadLine_Change(); });
  grid->addWidget(Label1, 5, 0);
  grid->addWidget(cmbNumber, 5, 1);
  grid->addWidget(Label3, 6, 0);
  grid->addWidget(txtDeadLine, 6, 1);
}

void frmRepeat::BuildButtons(QGridLayout* grid) {
  cmdPickDate = new QPushButton(u"..."_qs, this);
  cmdPickDate->setToolTip(tr("Vybrat koncové datum"));
  NameControl(cmdPickDate, u"cmdPickDate"_qs, cmdPickDate->toolTip());
  events().GotFocus(cmdPickDate, [this] { title_.FocusRead(speech(), QString(), cmdPickDate->toolTip()); });
  cmdOK = new QPushButton(tr("OK"), this);
  NameControl(cmdOK, u"cmdOK"_qs);
  cmdCancel = new QPushButton(tr("Storno"), this);
  NameControl(cmdCancel, u"cmdCancel"_qs);
  for (QPushButton* button : {cmdOK, cmdCancel}) LetButtonSpeak(button, events(), speech(), title_);
  cmdOK->setDefault(true);
  connect(cmdPickDate, &QPushButton::clicked, this, [this] { cmdPickDate_Click(); });
  connect(cmdOK, &QPushButton::clicked, this, [this] { cmdOK_Click(); });
  connect(cmdCancel, &QPushButton::clicked, this, [this] { reject(); });
  grid->addWidget(cmdPickDate, 7, 1);
  grid->addWidget(cmdOK, 8, 0);
  grid->addWidget(cmdCancel, 8, 1);
}

QComboBox* frmRepeat::MakeList(QLabel* label, const char* name, const QStringList& lines) {
  auto* list = new QComboBox(this);
  NameControl(list, QString::fromLatin1(name));
  list->addItems(lines);
  label->setBuddy(list);
  LetListSpeak(list, label, events(), speech(), title_);
  return list;
}

// Load.

void frmRepeat::LoadForm() {
  loading_ = true;
  if (state_.Repeat_Rule.isEmpty()) {
    cmbTimeUnit_Click();
    optEnd[0]->setChecked(true);
  } else {
    LoadRule(RuleText::Read(state_.Repeat_Rule));
  }
  loading_ = false;
}

void frmRepeat::LoadRule(const RuleText& rule) {
  optMonthDay[0]->setChecked(true);
  for (std::size_t i = 0; i < chkDay.size(); ++i) chkDay.at(i)->setChecked(rule.days.Has(WeekdayOfBox(i)));
  // A number that the list does not hold leaves the first one.
  if (rule.interval >= 1 && rule.interval <= kMost) cmbUnits->setCurrentIndex(static_cast<int>(rule.interval) - 1);
  cmbTimeUnit->setCurrentIndex(UnitOf(rule).value_or(0));
  cmbTimeUnit_Click();
  LoadEnd(rule);
  if (cmbTimeUnit->currentIndex() == kMonthly) optMonthDay[rule.monthDay > 0 ? 0 : 1]->setChecked(true);
}

void frmRepeat::LoadEnd(const RuleText& rule) {
  if (rule.EndsByCount()) {
    optEnd[1]->setChecked(true);
    if (rule.count <= kMost) cmbNumber->setCurrentIndex(static_cast<int>(rule.count) - 1);
  } else if (rule.endsByDate) {
    optEnd[2]->setChecked(true);
    if (rule.until) txtDeadLine->setText(DeadLineText(*rule.until));
  } else {
    optEnd[0]->setChecked(true);
  }
}

// Handlers.

void frmRepeat::cmbTimeUnit_Click() {
  const int unit = cmbTimeUnit->currentIndex();
  frmDays->setEnabled(unit == kWeekly);
  if (unit == kWeekly) {
    for (std::size_t i = 0; i < chkDay.size(); ++i) {
      if (WeekdayOfBox(i) == start_.WeekdayNumber()) chkDay.at(i)->setChecked(true);
    }
  }
  if (unit == kMonthly) optMonthDay[0]->setChecked(true);
  frmMonth->setEnabled(unit == kMonthly);
}

void frmRepeat::optEnd_Click(int index) {
  EnableEnd(index == 1, index == 2);
  if (index == 1) cmbNumber->setCurrentIndex(0);
  if (index == 2) txtDeadLine->setText(DeadLineText(start_));
}

void frmRepeat::EnableEnd(bool count, bool date) {
  Label1->setEnabled(count);
  cmbNumber->setEnabled(count);
  Label3->setEnabled(date);
  txtDeadLine->setEnabled(date);
  cmdPickDate->setEnabled(date);
}

void frmRepeat::txtDeadLine_Change() {
  if (!loading_) cmbNumber->setCurrentIndex(-1);
}

void frmRepeat::cmdPickDate_Click() {
  if (PickDate(services(), names_, txtDeadLine, this)) txtDeadLine->setFocus();
}

WeekdaySet frmRepeat::CheckedDays() const {
  WeekdaySet days;
  for (std::size_t i = 0; i < chkDay.size(); ++i) {
    if (chkDay.at(i)->isChecked()) days.Add(WeekdayOfBox(i));
  }
  return days;
}

std::optional<RepeatChoice> frmRepeat::Choice() const {
  RepeatChoice choice;
  choice.unit = std::max(cmbTimeUnit->currentIndex(), 0);
  choice.interval = cmbUnits->currentIndex() + 1;
  choice.days = CheckedDays();
  choice.byMonthDay = optMonthDay[0]->isChecked();
  choice.count = std::max(cmbNumber->currentIndex(), 0) + 1;
  if (optEnd[1]->isChecked()) choice.end = RepeatEnd::ByCount;
  if (!optEnd[2]->isChecked()) return choice;
  const auto deadLine = DayOfText(txtDeadLine->text(), Now());
  if (!deadLine) return {};
  choice.end = RepeatEnd::ByDate;
  choice.deadLine = *deadLine;
  return choice;
}

void frmRepeat::cmdOK_Click() {
  const auto choice = Choice();
  if (!choice) {
    txtDeadLine->setFocus();
    return speech().Signal(Speech::Refused);
  }
  state_.Repeat_Rule = ComposeRule(*choice, start_).Write();
  if (choice->unit == kWeekly) {
    const Date start = StartOnCheckedDay(start_, choice->days);
    if (start != start_) state_.Repeat_StartTime = DateText(start);
  }
  accept();
}

}  // namespace talnik
