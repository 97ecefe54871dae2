#include "timetools/frmSetSysTime.h"

#include "shell/FocusSpeech.h"
#include "shell/VoiceDialog.h"
#include "store/Text.h"
#include "timetools/PickDate.h"
#include "timetools/SpinTimeField.h"
#include "timetools/SystemClock.h"
#include "timetools/TimeFieldPair.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>

#include <utility>

namespace talnik {
namespace {

constexpr int TagSysTime = 1720;
constexpr int TagCountdown = 1725;
constexpr int TagPostpone = 1726;
constexpr int TagTask = 1727;

QString OrZero(const QString& text) {
  return text.isEmpty() ? u"00"_qs : text;
}

QString OrZeroAbove(const QString& text, int maximum) {
  return FieldValue(text) > maximum ? u"00"_qs : OrZero(text);
}

/// "hours:minutes:00"
QString TimeOfFields(const QString& hours, const QString& minutes) {
  return hours + u':' + minutes + u":00"_qs;
}

}  // namespace

frmSetSysTime::frmSetSysTime(FormServices& services, const CalendarNames& names, TimeEntry& entry, Countdown& countdown,
                             AlarmShifter shiftAlarm, QWidget* parent)
    : Form(services, u"frmSetSysTime"_qs, TagTask, parent),
      names_(names),
      entry_(entry),
      countdown_(countdown),
      shiftAlarm_(std::move(shiftAlarm)) {
  BuildControls();
  fields_ = std::make_unique<TimeFieldPair>(Text1, events(), speech(), title_, TimeFieldPair::SpinSpeech::AtRelease);
}

frmSetSysTime::~frmSetSysTime() = default;

void frmSetSysTime::BuildControls() {
  auto* grid = new QGridLayout(this);
  MakeTimeFields(this, u"Label1"_qs, Label1, Text1);
  for (std::size_t field = 0; field < Text1.size(); ++field) {
    grid->addWidget(Label1.at(field), static_cast<int>(field), 0);
    grid->addWidget(Text1.at(field), static_cast<int>(field), 1);
  }
  cmdSet = new QPushButton(tr("Nastavit"), this);
  cmdSetDate = new QPushButton(tr("Vybrat datum a čas"), this);
  cmdDuration = new QPushButton(tr("Koncový"), this);
  cmdCancel = new QPushButton(tr("Storno"), this);
  NameControl(cmdSet, u"cmdSet"_qs);
  NameControl(cmdSetDate, u"cmdSetDate"_qs);
  NameControl(cmdDuration, u"cmdDuration"_qs);
  NameControl(cmdCancel, u"cmdCancel"_qs);
  int row = 2;
  for (QPushButton* button : {cmdSet, cmdSetDate, cmdDuration, cmdCancel}) {
    grid->addWidget(button, row++, 0, 1, 2);
    LetButtonSpeak(button, events(), speech(), title_);
  }
  cmdSet->setDefault(true);
  cmdSetDate->hide();
  cmdDuration->hide();

  txtDelayReceptor = new QLineEdit(this);
  NameControl(txtDelayReceptor, u"txtDelayReceptor"_qs);
  txtDelayReceptor->hide();

  connect(cmdSet, &QPushButton::clicked, this, [this] { cmdSet_Click(); });
  connect(cmdSetDate, &QPushButton::clicked, this, [this] { cmdSetDate_Click(); });
  connect(cmdDuration, &QPushButton::clicked, this, [this] { cmdDuration_Click(); });
  connect(cmdCancel, &QPushButton::clicked, this, [this] { cmdCancel_Click(); });
}

void frmSetSysTime::Suggest(const Date& time) {
  fields_->Set(time);
}

void frmSetSysTime::Open() {
  Load();
  Text1[TimeFields::Hours]->setFocus();
  title_.Set(windowTitle());
  ShowModal();
}

void frmSetSysTime::Load() {
  if (SysTimeMode) {
    SetTag(TagSysTime);
    setWindowTitle(tr("Čas systému"));
    cmdSet->setText(tr("Nastavit čas"));
    Suggest(Now());
  } else if (CountdownMode) {
    SetTag(TagCountdown);
    setWindowTitle(tr("Minutky"));
    fields_->Set(QString(), QString());
    if (countdown_.CountdownRunning) {
      const QString left = CountdownLeftText(countdown_, Now()).section(u':', 0, 1);
      fields_->Set(left.left(2), left.right(2));
    }
  } else if (PostponeMode) {
    SetTag(TagPostpone);
    setWindowTitle(tr("Odložit"));
    fields_->Set(u"00"_qs, u"00"_qs);
    cmdSetDate->show();
  } else {
    setWindowTitle(tr("Čas úkolu"));
    cmdDuration->show();
  }
}

void frmSetSysTime::cmdSet_Click() {
  if (SysTimeMode) {
    SetSystemTime();
  } else if (CountdownMode) {
    SetCountdownTime();
  } else if (PostponeMode) {
    SetDelay();
  } else {
    SetTaskTime();
  }
}

void frmSetSysTime::SetSystemTime() {
  const QString time = TimeOfFields(fields_->Hours(), fields_->Minutes());
  const auto moment = CDate(DayText(Now()) + u' ' + time, Now());
  if (!moment || settingClock_) return speech().Signal(Speech::Refused);
  settingClock_ = true;
  SetSystemClock(services(), *moment, [form = QPointer<frmSetSysTime>(this)] {
    if (form) form->accept();
  });
}

void frmSetSysTime::SetCountdownTime() {
  const CountdownAnswer answer = SetCountdown(countdown_, fields_->Hours(), fields_->Minutes(), Now());
  if (answer == CountdownAnswer::Refused) return speech().Signal(Speech::Refused);
  speech().Say(CountdownAnswerText(answer));
  accept();
}

void frmSetSysTime::SetDelay() {
  const QString time = TimeOfFields(OrZeroAbove(fields_->Hours(), 23), OrZeroAbove(fields_->Minutes(), 59));
  entry_.DelayTimeSet = true;
  entry_.DelayValue = CDate(time, Now()).value_or(Date());
  accept();
}

void frmSetSysTime::SetTaskTime() {
  if (!ValidTimeFields(fields_->Hours(), fields_->Minutes())) return speech().Signal(Speech::Refused);
  if (fields_->Empty()) {
    entry_.TaskTimeEmpty = true;
  } else {
    entry_.TaskTimeText += u' ' + TimeOfFields(OrZero(fields_->Hours()), OrZero(fields_->Minutes()));
  }
  accept();
}

void frmSetSysTime::cmdCancel_Click() {
  entry_.TaskTimeText.clear();
  if (PostponeMode) {
    entry_.DelayTimeSet = false;
  } else if (!SysTimeMode && !CountdownMode) {
    entry_.TaskTimeCancelled = true;
  }
  reject();
}

void frmSetSysTime::cmdSetDate_Click() {
  txtDelayReceptor->setText(entry_.DelayStartText);
  PickDate(services(), names_, txtDelayReceptor, this, PickDateTagOfSetSysTime);
  if (txtDelayReceptor->text() != entry_.DelayStartText) {
    if (shiftAlarm_) shiftAlarm_(0, 0, txtDelayReceptor->text());
    entry_.DelayDateChosen = true;
  }
  accept();
}

void frmSetSysTime::cmdDuration_Click() {
  if (!ValidTimeFields(fields_->Hours(), fields_->Minutes())) return speech().Signal(Speech::Refused);
  QString startText = entry_.TaskTimeText;
  if (!fields_->Empty()) startText += u' ' + TimeOfFields(OrZero(fields_->Hours()), OrZero(fields_->Minutes()));
  const Date start = CDate(startText, Now()).value_or(Now());

  Date shown = entry_.HasEndPreset && entry_.EndPreset > start ? entry_.EndPreset : start;
  for (;;) {
    txtDelayReceptor->setText(TrimSeconds(DateText(shown)));
    if (!PickDate(services(), names_, txtDelayReceptor, this, PickDateTagOfSetSysTime)) return;
    shown = CDate(txtDelayReceptor->text(), Now()).value_or(shown);
    if (shown >= start) break;
    dialogs().Warn(tr("Čas ukončení je před časem počátku. Upravte tento údaj."));
  }
  entry_.HasEndPreset = true;
  entry_.EndPreset = shown;
}

}  // namespace talnik
