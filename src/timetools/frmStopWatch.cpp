#include "timetools/frmStopWatch.h"

#include "shell/cStandardEditBox.h"
#include "timetools/frmLapTime.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace talnik {
namespace {

constexpr int StopWatchTag = 1723;
constexpr int DisplayInterval = 100;  // ms
constexpr int ReadOnlyFlags = 2;

bool ReadPlayTick(const Registry& registry) {
  const QVariant stored = GetRegistryValue(registry, u"Software\\Quenta\\Talnik"_qs, u"Set"_qs, u"PlayTick"_qs, -1);
  bool isNumber = false;
  const int number = stored.toString().toInt(&isNumber);
  return !isNumber || number != 0;
}

void WritePlayTick(Registry& registry, bool playTick) {
  SaveRegistryValue(registry, u"Software\\Quenta\\Talnik"_qs, u"Set"_qs, u"PlayTick"_qs, playTick ? u"-1"_qs : u"0"_qs);
}

/// Writes a field without moving the caret of a user who reads it.
void ShowText(QLineEdit* edit, const QString& text) {
  if (edit->text() == text) return;
  const int caret = edit->cursorPosition();
  edit->setText(text);
  edit->setCursorPosition(std::min(caret, static_cast<int>(text.size())));
}

}  // namespace

frmStopWatch::frmStopWatch(FormServices& services, Registry& registry, const CodePage& codePage, QWidget* parent)
    : Form(services, u"frmStopWatch"_qs, StopWatchTag, parent),
      registry_(registry),
      codePage_(codePage),
      playTick_(ReadPlayTick(registry)),
      tickFile_(services.look.SoundPath(u"del.wav"_qs)) {
  setWindowTitle(tr("Stopky"));
  BuildControls();
  ConnectControls();
  chkSound->setChecked(playTick_);
  ShowFields();
}

frmStopWatch::~frmStopWatch() {
  WritePlayTick(registry_, playTick_);
}

void frmStopWatch::BuildControls() {
  const std::array<QString, 4> names{tr("Hodin:"), tr("Minut:"), tr("Sekund:"), tr("Milisekund:")};
  lblHour = new QLabel(tr("&Hodin:"), this);
  lblMinute = new QLabel(tr("&Minut:"), this);
  NameControl(lblHour, u"lblHour"_qs);
  NameControl(lblMinute, u"lblMinute"_qs);
  auto* grid = new QGridLayout(this);
  for (std::size_t i = 0; i < Text1.size(); ++i) {
    Text1.at(i) = new QLineEdit(this);
    Text1.at(i)->setReadOnly(true);
    NameControl(Text1.at(i), u"Text1(%1)"_qs.arg(i), names.at(i));
    grid->addWidget(Text1.at(i), 1, static_cast<int>(i));
  }
  lblHour->setBuddy(Text1[0]);
  lblMinute->setBuddy(Text1[1]);
  grid->addWidget(lblHour, 0, 0);
  grid->addWidget(lblMinute, 0, 1);

  cmdSet = new QPushButton(tr("Start F3"), this);
  cmdLapTime = new QPushButton(tr("Mezičas F4"), this);
  cmdSay = new QPushButton(tr("Ohlásit F2"), this);
  cmdReset = new QPushButton(tr("Reset F5"), this);
  chkSound = new QCheckBox(tr("Zvuk"), this);
  cmdCancel = new QPushButton(tr("Storno"), this);
  const std::array<std::pair<QAbstractButton*, QString>, 6> buttons{{{cmdSet, u"cmdSet"_qs},
                                                                     {cmdLapTime, u"cmdLapTime"_qs},
                                                                     {cmdSay, u"cmdSay"_qs},
                                                                     {cmdReset, u"cmdReset"_qs},
                                                                     {chkSound, u"chkSound"_qs},
                                                                     {cmdCancel, u"cmdCancel"_qs}}};
  int row = 2;
  for (const auto& [button, name] : buttons) {
    NameControl(button, name);
    grid->addWidget(button, row++, 0, 1, 4);
    LetButtonSpeak(button, events(), speech(), title_);
  }
  cmdSet->setDefault(true);
  Timer1 = new QTimer(this);
  Timer1->setObjectName(u"Timer1"_qs);
  Timer1->setInterval(DisplayInterval);
}

void frmStopWatch::ConnectControls() {
  for (QLineEdit* edit : Text1) {
    events().GotFocus(edit, [this] { title_.FocusRead(speech(), QString(), JoinedFields(watch_.Fields)); });
    MakeTextBox(edit, ReadOnlyFlags, events(), speech());
  }
  events().FormKeyUp([this](Key& key) {
    switch (key.code) {
      case Qt::Key_F2:
        return cmdSay_Click();
      case Qt::Key_F3:
        return cmdSet_Click();
      case Qt::Key_F4:
        return cmdLapTime_Click();
      case Qt::Key_F5:
        return cmdReset_Click();
      default:
        return;
    }
  });
  connect(cmdSet, &QPushButton::clicked, this, [this] { cmdSet_Click(); });
  connect(cmdLapTime, &QPushButton::clicked, this, [this] { cmdLapTime_Click(); });
  connect(cmdSay, &QPushButton::clicked, this, [this] { cmdSay_Click(); });
  connect(cmdReset, &QPushButton::clicked, this, [this] { cmdReset_Click(); });
  connect(cmdCancel, &QPushButton::clicked, this, [this] { reject(); });
  connect(chkSound, &QCheckBox::toggled, this, [this](bool on) { playTick_ = on; });
  connect(Timer1, &QTimer::timeout, this, [this] { Timer1_Timer(); });
}

void frmStopWatch::InitMe() {
  watch_ = StopWatch();
  Timer1->stop();
  cmdSet->setText(tr("Start F3"));
  ShowFields();
}

void frmStopWatch::Open() {
  title_.Set(windowTitle());
  cmdSet->setFocus();
  ShowModal();
  Timer1->stop();
}

void frmStopWatch::ShowFields() {
  for (std::size_t i = 0; i < Text1.size(); ++i) ShowText(Text1.at(i), watch_.Fields.at(i));
}

void frmStopWatch::cmdSet_Click() {
  const bool stops = watch_.WatchState == StopWatch::Running;
  if (stops) cmdSay_Click();
  watch_.StartOrStop(Now());
  cmdSet->setText(stops ? tr("Start F3") : tr("Stop F3"));
  if (stops) {
    Timer1->stop();
  } else {
    Timer1->start();
  }
}

void frmStopWatch::cmdLapTime_Click() {
  if (watch_.WatchState == StopWatch::Running) {
    watch_.AddLap(Now());
    return cmdSay_Click();
  }
  frmLapTime laps(services(), watch_.Laps, watch_.Fields, registry_, codePage_, this);
  laps.Open();
}

void frmStopWatch::cmdSay_Click() {
  speech().Say(StopWatchText(watch_.Fields));
}

void frmStopWatch::cmdReset_Click() {
  watch_.Reset(Now());
  ShowFields();
  cmdSay_Click();
}

void frmStopWatch::Timer1_Timer() {
  const bool secondChanged = watch_.Tick(Now());
  if (secondChanged && playTick_) speech().PlaySound(tickFile_);
  ShowFields();
}

}  // namespace talnik
