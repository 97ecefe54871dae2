#include "timetools/frmPickDate.h"

#include "dates/Easter.h"
#include "shell/FocusSpeech.h"
#include "shell/TextControls.h"
#include "shell/Texts.h"
#include "timetools/MonthList.h"
#include "timetools/TimeFieldPair.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <utility>

namespace talnik {

frmPickDate::frmPickDate(FormServices& services, const CalendarNames& names, int tag, QWidget* parent)
    : Form(services, u"frmPickDate"_qs, tag, parent), names_(names) {
  setWindowTitle(tr("Vyber datum a čas"));
  BuildControls();
  fields_ = std::make_unique<TimeFieldPair>(Text1, events(), speech(), title_, TimeFieldPair::SpinSpeech::AtEachChange);
  ConnectKeys();
}

frmPickDate::~frmPickDate() = default;

void frmPickDate::BuildControls() {
  Label1 = new QLabel(this);
  List1 = new ListBox(this);
  Command2 = new QPushButton(u"<"_qs, this);
  Command4 = new QPushButton(u">"_qs, this);
  cmdOK = new QPushButton(SharedText(TextId::OK), this);
  cmdCancel = new QPushButton(tr("Storno"), this);
  Label1->setBuddy(List1);
  NameControl(Label1, u"Label1"_qs);
  NameControl(List1, u"List1"_qs, windowTitle());
  NameControl(Command2, u"Command2"_qs, tr("předchozí měsíc"));
  NameControl(Command4, u"Command4"_qs, tr("další měsíc"));
  NameControl(cmdOK, u"cmdOK"_qs);
  NameControl(cmdCancel, u"cmdCancel"_qs);

  auto* grid = new QGridLayout(this);
  grid->addWidget(Command2, 0, 0);
  grid->addWidget(Label1, 0, 1, 1, 2, Qt::AlignCenter);
  grid->addWidget(Command4, 0, 3);
  grid->addWidget(List1, 1, 0, 1, 4);
  MakeTimeFields(this, u"lblTime"_qs, lblTime, Text1);
  for (std::size_t field = 0; field < Text1.size(); ++field) {
    grid->addWidget(lblTime.at(field), 2, static_cast<int>(2 * field));
    grid->addWidget(Text1.at(field), 2, static_cast<int>(2 * field) + 1);
  }
  grid->addWidget(cmdOK, 3, 0, 1, 2);
  grid->addWidget(cmdCancel, 3, 2, 1, 2);
  cmdOK->setDefault(true);

  QWidget* before = List1;
  for (QWidget* next :
       {static_cast<QWidget*>(Text1[0]), static_cast<QWidget*>(Text1[1]), static_cast<QWidget*>(cmdOK),
        static_cast<QWidget*>(cmdCancel), static_cast<QWidget*>(Command2), static_cast<QWidget*>(Command4)}) {
    setTabOrder(std::exchange(before, next), next);
  }
}

void frmPickDate::ConnectKeys() {
  connect(List1, &ListBox::Click, this, [this] {
    if (!suppressClick_) speech().Say(List1->Text());
  });
  events().GotFocus(List1, [this] { List1_GotFocus(); });
  events().KeyDown(List1, [this](Key& key) { List1_KeyDown(key); });
  events().KeyPress(List1, [this](Key& key) { List1_KeyPress(key); });
  events().KeyUp(List1, [this](Key& key) { List1_KeyUp(key); });
  events().FormKeyDown([this](Key& key) {
    if (key.Is(Qt::Key_F5)) List1->setFocus();
  });
  for (QPushButton* button : {Command2, Command4}) {
    events().GotFocus(button, [this, button] { speech().Say(button->accessibleName()); });
    connect(button, &QPushButton::clicked, this, [this, button] {
      MoveMonth(button == Command4, false);
      List1->setFocus();
    });
  }
  LetButtonSpeak(cmdOK, events(), speech(), title_);
  LetButtonSpeak(cmdCancel, events(), speech(), title_);
  connect(cmdOK, &QPushButton::clicked, this, [this] { cmdOK_Click(); });
  connect(cmdCancel, &QPushButton::clicked, this, [this] { reject(); });
}

void frmPickDate::Open(const Date& date) {
  Show(date);
  fields_->Set(date);
  Cancelled = true;
  title_.Set(windowTitle());
  List1->setFocus();
  ShowModal();
}

void frmPickDate::List1_GotFocus() {
  title_.FocusRead(speech(), QString(), DayAndMonth());
}

void frmPickDate::List1_KeyDown(Key& key) {
  switch (key.code) {
    case Qt::Key_Left:
    case Qt::Key_Right:
      // They change the month at the release; the list must not move by itself.
      return key.Swallow();
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      key.Swallow();
      return MoveWeek(key.code == Qt::Key_PageDown);
    case Qt::Key_Up:
      if (List1->ListIndex() > 0) return;
      key.Swallow();
      return WalkOverEdge(false);
    case Qt::Key_Down:
      if (List1->ListIndex() < List1->ListCount() - 1) return;
      key.Swallow();
      return WalkOverEdge(true);
    default:
      break;
  }
  if (!key.NumericMinus() && !key.NumericPlus()) return;
  key.Swallow();
  MoveAndSayMonth(key.NumericPlus(), false);
}

void frmPickDate::List1_KeyPress(Key& key) {
  if (key.text.size() != 1) return;
  const QChar typed = key.text[0];
  // Letters and the blank act at the release; the list's own search would move by them.
  if (typed.isPrint()) key.Swallow();
  if (typed < u'0' || typed > u'9') return;
  suppressClick_ = true;
  if (const auto line = LineOfDigits(digitBuffer_, typed, List1->ListCount())) List1->SetListIndex(*line);
  suppressClick_ = false;
  speech().Say(List1->Text());
}

void frmPickDate::List1_KeyUp(Key& key) {
  if (std::exchange(skipKeyUp_, false)) return key.Swallow();
  const bool shift = key.shift != Qt::NoModifier;
  switch (key.code) {
    case Qt::Key_F3:
    case Qt::Key_Space:
      return speech().Say(DayAndMonth());
    case Qt::Key_Left:
    case Qt::Key_Right:
      key.Swallow();
      if (shift && key.shift != Qt::ControlModifier) return;
      return MoveAndSayMonth(key.code == Qt::Key_Right, shift);
    case Qt::Key_D:
      return ShowDate(Now());
    case Qt::Key_V:
      return MoveToEaster(!shift);
    default:
      return SearchWeekDay(key.code, shift);
  }
}

void frmPickDate::WalkOverEdge(bool forward) {
  skipKeyUp_ = true;
  const bool moved = forward ? NextMonth(List1, Label1, false, false, currentDate_, names_)
                             : PrevMonth(List1, Label1, false, false, currentDate_, names_);
  if (!moved) return speech().Signal(Speech::EndOfList);
  List1->SetListIndex(forward ? 0 : List1->ListCount() - 1);
}

void frmPickDate::MoveWeek(bool forward) {
  const QString monthBefore = Label1->text();
  const auto from = SelectedDate(List1, currentDate_);
  const auto date = from ? WeekJump(*from, forward) : std::nullopt;
  if (!date) return speech().Signal(Speech::EndOfList);
  Show(*date);
  speech().Say(List1->Text());
  if (Label1->text() != monthBefore) speech().SayPart(0, Label1->text());
}

bool frmPickDate::MoveMonth(bool forward, bool byYear) {
  suppressClick_ = true;
  const bool moved = forward ? NextMonth(List1, Label1, byYear, true, currentDate_, names_)
                             : PrevMonth(List1, Label1, byYear, true, currentDate_, names_);
  suppressClick_ = false;
  return moved;
}

void frmPickDate::MoveAndSayMonth(bool forward, bool byYear) {
  if (!MoveMonth(forward, byYear)) return speech().Signal(Speech::EndOfList);
  speech().Say(Label1->text() + u' ' + List1->Text());
}

void frmPickDate::SearchWeekDay(int key, bool back) {
  const auto text = WeekDayOfLetter(dayPrefix_, key);
  const auto from = SelectedDate(List1, currentDate_);
  if (!text || !from) return;
  const QString monthBefore = Label1->text();
  if (!FindWeekDay(List1, Label1, *text, back, currentDate_, names_)) return ShowDate(*from);
  if (Label1->text() != monthBefore) speech().SayPart(0, Label1->text());
}

void frmPickDate::MoveToEaster(bool forward) {
  const auto from = SelectedDate(List1, currentDate_);
  if (!from) return;
  const auto easterOf = [](int year) { return EasterDate(QString::number(year)); };
  Date easter = easterOf(from->Year());
  if (forward && easter <= *from) easter = easterOf(from->Year() + 1);
  if (!forward && easter >= *from) easter = easterOf(from->Year() - 1);
  ShowDate(easter);
}

void frmPickDate::Show(const Date& date) {
  suppressClick_ = true;
  FillMonthList(List1, Label1, date, names_);
  suppressClick_ = false;
  currentDate_ = date;
}

void frmPickDate::ShowDate(const Date& date) {
  const QString monthBefore = Label1->text();
  Show(date);
  speech().Say(Label1->text() == monthBefore ? List1->Text() : DayAndMonth());
}

QString frmPickDate::DayAndMonth() const {
  return List1->Text() + u' ' + Label1->text();
}

void frmPickDate::cmdOK_Click() {
  if (fields_->Hours().isEmpty()) Text1[TimeFields::Hours]->setText(u"00"_qs);
  if (fields_->Minutes().isEmpty()) Text1[TimeFields::Minutes]->setText(u"00"_qs);
  const auto day = SelectedDate(List1, currentDate_);
  if (!day) return speech().Signal(Speech::Refused);
  const auto date = CDate(DayText(*day) + u' ' + fields_->Hours() + u':' + fields_->Minutes() + u":00"_qs, Now());
  if (!date) {
    speech().Signal(Speech::Refused);
    return fields_->SetFocus(FieldValue(fields_->Hours()) > 23 ? TimeFields::Hours : TimeFields::Minutes);
  }
  Chosen = *date;
  Cancelled = false;
  accept();
}

}  // namespace talnik
