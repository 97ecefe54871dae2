#include "editor/EditorControls.h"
#include "editor/MMControl.h"
#include "editor/RecordSpeech.h"
#include "editor/frmSchedule.h"
#include "menus/OwnMenus.h"
#include "shell/TextControls.h"
#include "shell/VoiceDialog.h"
#include "shell/cStandardEditBox.h"

#include <QAbstractItemView>
#include <QAction>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace talnik {
namespace {

constexpr int NoteLines = 3;

/// The lists that can only be chosen from; the form speaks for them.
ChoiceList* MakeList(QWidget* parent, const QString& name, const QStringList& lines) {
  auto* list = new ChoiceList(parent);
  NameControl(list, name);
  list->addItems(lines);
  return list;
}

QLabel* MakeLabel(QWidget* parent, const QString& name, const QString& caption) {
  auto* label = new QLabel(caption, parent);
  NameControl(label, name);
  return label;
}

bool IsListKey(const Key& key) {
  return key.Is(Qt::Key_Up) || key.Is(Qt::Key_Down) || key.Is(Qt::Key_Home) || key.Is(Qt::Key_End);
}

bool IsPageKey(const Key& key) {
  return key.Is(Qt::Key_PageUp) || key.Is(Qt::Key_PageDown);
}

/// Parts of controls beside each other; a narrow screen gets the parts below each other.
QBoxLayout* MakeWideRow(const QList<QList<QWidget*>>& parts) {
  auto* row = new QHBoxLayout;
  for (const auto& part : parts) {
    auto* group = new QHBoxLayout;
    for (QWidget* control : part) group->addWidget(control, qobject_cast<ChoiceList*>(control) ? 1 : 0);
    row->addLayout(group, 1);
  }
  return row;
}

}  // namespace

void frmSchedule::BuildControls() {
  auto* rows = new QVBoxLayout(this);
  rows->addLayout(BuildTextRow());
  rows->addLayout(BuildTimeRow());
  rows->addLayout(BuildAlarmRow());
  rows->addLayout(BuildPositionRow());
  rows->addLayout(BuildButtonRow());
  OrderTabs();
  for (QLineEdit* field : {Text3, Text4, Text5}) WidenFor(field, u"28.12.2028 20:28:28"_qs);
}

QLineEdit* frmSchedule::MakeField(const QString& name, const QString& accessibleName) {
  auto* field = new QLineEdit(this);
  NameControl(field, name, accessibleName);
  return field;
}

QPushButton* frmSchedule::MakePicker(const QString& name, const QString& tip) {
  auto* picker = new QPushButton(u"..."_qs, this);
  NameControl(picker, name, tip);
  picker->setToolTip(tip);
  return picker;
}

QBoxLayout* frmSchedule::BuildTextRow() {
  lblNote = MakeLabel(this, u"lblNote"_qs, tr("Poznámka:"));
  Text1 = new NoteBox(AppointmentSize, this);
  NameControl(Text1, u"Text1"_qs);
  Text1->ensurePolished();
  Text1->setMinimumHeight(NoteLines * Text1->fontMetrics().lineSpacing());
  lblNote->setBuddy(Text1);
  auto* row = new QVBoxLayout;
  row->addWidget(lblNote);
  row->addWidget(Text1, 1);
  return row;
}

QBoxLayout* frmSchedule::BuildTimeRow() {
  lblTime = MakeLabel(this, u"lblTime"_qs, tr("Čas:"));
  Text3 = MakeField(u"Text3"_qs, QString());
  lblTime->setBuddy(Text3);
  cmdPickDate1 = MakePicker(u"cmdPickDate1"_qs, tr("Vybrat datum a čas"));
  Text4 = MakeField(u"Text4"_qs, tr("Ukončení"));
  cmdPickDate2 = MakePicker(u"cmdPickDate2"_qs, tr("Vybrat datum a čas ukončení"));
  return MakeWideRow({{lblTime, Text3, cmdPickDate1}, {Text4, cmdPickDate2}});
}

QBoxLayout* frmSchedule::BuildAlarmRow() {
  lblAlarm = MakeLabel(this, u"lblAlarm"_qs, tr("Alarm:"));
  cmbUserUnit = MakeList(this, u"cmbUserUnit"_qs, UserUnitTexts());
  lblAlarm->setBuddy(cmbUserUnit);
  Text5 = MakeField(u"Text5"_qs, tr("Jak dlouho předem"));
  cmbAlarmUnit = MakeList(this, u"cmbAlarmUnit"_qs, AlarmUnitTexts());
  LabelUnseen(cmbAlarmUnit, tr("Jednotka"));
  cmdPickDate3 = MakePicker(u"cmdPickDate3"_qs, tr("Vybrat datum a čas"));
  Picture1 = new QWidget(this);
  NameControl(Picture1, u"Picture1"_qs);
  chkAlarm = new QCheckBox(tr("&Alarm"), Picture1);
  NameControl(chkAlarm, u"chkAlarm"_qs);
  Image2 = new BellPicture(services().look.ForeColor, Picture1);
  NameControl(Image2, u"Image2"_qs, tr("Záznam má alarm"));
  auto* holder = new QHBoxLayout(Picture1);
  holder->setContentsMargins(0, 0, 0, 0);
  holder->addWidget(chkAlarm);
  holder->addWidget(Image2);
  return MakeWideRow({{lblAlarm, cmbUserUnit}, {Text5, cmbAlarmUnit, cmdPickDate3}, {Picture1}});
}

QBoxLayout* frmSchedule::BuildPositionRow() {
  lblPos = MakeLabel(this, u"lblPos"_qs, tr("Položka:"));
  txtPos = MakeField(u"txtPos"_qs, QString());
  txtPos->setText(u"1/1"_qs);
  txtPos->setReadOnly(true);
  lblPos->setBuddy(txtPos);
  Text2 = MakeField(u"Text2"_qs, tr("Nahrávka"));
  Text2->setMaxLength(static_cast<int>(WavSize));
  auto* row = new QHBoxLayout;
  row->addWidget(lblPos);
  row->addWidget(txtPos);
  row->addWidget(Text2, 1);
  return row;
}

QBoxLayout* frmSchedule::BuildButtonRow() {
  const auto button = [this](const QString& name, const QString& caption) {
    auto* made = new QPushButton(caption, this);
    NameControl(made, name);
    return made;
  };
  cmdRepeat = button(u"cmdRepeat"_qs, RepeatCaption(QString()));
  cmdSound = button(u"cmdSound"_qs, tr("Nahrávání"));
  cmdOK = button(u"cmdOK"_qs, tr("Uložit"));
  cmdStorno = button(u"cmdStorno"_qs, tr("Storno"));
  cmdSound->setEnabled(false);
  return MakeWideRow({{cmdRepeat, cmdSound}, {cmdOK, cmdStorno}});
}

void frmSchedule::OrderTabs() {
  const QList<QWidget*> order = {Text1,     Text3,        cmdPickDate1, Text4,        cmdPickDate2, cmbUserUnit,
                                 Text5,     cmbAlarmUnit, chkAlarm,     cmdPickDate3, txtPos,       Text2,
                                 cmdRepeat, cmdSound,     cmdOK,        cmdStorno};
  for (qsizetype i = 1; i < order.size(); ++i) setTabOrder(order[i - 1], order[i]);
}

void frmSchedule::BuildMenus() {
  using Kind = MenuItem::Kind;
  const QString record = u"mnuRecord"_qs;
  const QString edit = u"mnuEdit"_qs;
  const QString show = u"mnuShow"_qs;
  const QString sound = u"mnuSound"_qs;
  const QList<MenuItem> items = {
      {record, tr("Záznam"), QString(), Kind::Group},
      {u"mnuText"_qs, tr("Přečíst text"), record, Kind::Command},
      {u"mnuDate"_qs, tr("Přečíst čas"), record, Kind::Command},
      {u"mnuDur"_qs, tr("Přečíst ukončení"), record, Kind::Command},
      {u"mnuRecPos"_qs, tr("Pozice"), record, Kind::Command},
      {u"mnuSep1"_qs, QString(), record, Kind::Separator},
      {u"mnuSaveAndExit"_qs, tr("Uložit"), record, Kind::Command},
      {u"mnuExit"_qs, tr("&Zavřít Plán"), record, Kind::Command},
      {edit, tr("Úpravy"), QString(), Kind::Group},
      {u"mnuDelete"_qs, tr("Smaž aktuální záznam"), edit, Kind::Command},
      {u"mnuDeleteOld"_qs, tr("Smaž záznamy starší než aktuální"), edit, Kind::Command},
      {u"mnuEditDuration"_qs, tr("Upravit čas úkolu"), edit, Kind::Command},
      {u"mnuRecurrEvent"_qs, tr("Opakování"), edit, Kind::Command},
      {show, tr("Zobrazit"), QString(), Kind::Group},
      {u"mnuFirst"_qs, tr("První") + u"\tCtrl+PageUp"_qs, show, Kind::Command},
      {u"mnuPrev"_qs, tr("Předchozí") + u"\tPageUp"_qs, show, Kind::Command},
      {u"mnuNext"_qs, tr("Další") + u"\tPageDown"_qs, show, Kind::Command},
      {u"mnuLast"_qs, tr("Poslední") + u"\tCtrl+PageDown"_qs, show, Kind::Command},
      {sound, tr("Nahrávka"), QString(), Kind::Group},
      {u"mnuRec"_qs, tr("Nahrát"), sound, Kind::Command},
      {u"mnuPlay"_qs, tr("Přehrát"), sound, Kind::Command},
      {u"mnuSndDel"_qs, tr("Smazat"), sound, Kind::Command},
  };
  auto* bar = new QMenuBar(this);
  menu_ = talnik::BuildMenus(*bar, items);
  layout()->setMenuBar(bar);
  menus_ = new OwnMenus(speech(), services().look, this);
  menus_->Attach(*bar);
  SetHasSound(false);
}

void frmSchedule::SetState(QAction* action, bool enabled) {
  menus_->SetState(action, enabled);
}

void frmSchedule::ConnectMenus() {
  const QList<std::pair<QString, std::function<void()>>> commands = {
      {u"mnuText"_qs, [this] { mnuText_Click(); }},
      {u"mnuDate"_qs, [this] { mnuDate_Click(); }},
      {u"mnuDur"_qs, [this] { mnuDur_Click(); }},
      {u"mnuRecPos"_qs, [this] { mnuRecPos_Click(); }},
      {u"mnuSaveAndExit"_qs, [this] { cmdOK_Click(); }},
      {u"mnuExit"_qs, [this] { Unload(); }},
      {u"mnuDelete"_qs, [this] { mnuDelete_Click(); }},
      {u"mnuDeleteOld"_qs, [this] { mnuDeleteOld_Click(); }},
      {u"mnuEditDuration"_qs, [this] { mnuEditDuration_Click(); }},
      {u"mnuRecurrEvent"_qs, [this] { cmdRepeat_Click(); }},
      {u"mnuFirst"_qs, [this] { MoveTo(Move::First); }},
      {u"mnuPrev"_qs, [this] { MoveTo(Move::Previous); }},
      {u"mnuNext"_qs, [this] { MoveTo(Move::Next); }},
      {u"mnuLast"_qs, [this] { MoveTo(Move::Last); }},
      {u"mnuRec"_qs, [this] { mnuRec_Click(); }},
      {u"mnuPlay"_qs, [this] { mnuPlay_Click(); }},
      {u"mnuSndDel"_qs, [this] { mnuSndDel_Click(); }},
  };
  for (const auto& [name, run] : commands) connect(menu_.value(name), &QAction::triggered, this, run);
}

void frmSchedule::ConnectButtons() {
  const QList<std::pair<QPushButton*, std::function<void()>>> buttons = {
      {cmdPickDate1, [this] { cmdPickDate1_Click(); }},
      {cmdPickDate2, [this] { cmdPickDate2_Click(); }},
      {cmdPickDate3, [this] { PickDateInto(Text5); }},
      {cmdRepeat, [this] { cmdRepeat_Click(); }},
      {cmdOK, [this] { cmdOK_Click(); }},
      {cmdStorno, [this] { cmdStorno_Click(); }},
      {cmdSound, [this] { cmdSound_Click(); }},
  };
  for (const auto& [button, run] : buttons) {
    // Enter in a field picks a date or begins a line; it must not press a button.
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, run);
    events().KeyDown(button, [pressed = button](Key& key) {
      if (!key.Is(Qt::Key_Return, Qt::NoModifier)) return;
      key.Swallow();
      pressed->click();
    });
  }
  for (QPushButton* picker : {cmdPickDate1, cmdPickDate2, cmdPickDate3}) {
    AnnounceField(
        picker, [] { return QString(); }, [picker] { return picker->toolTip(); });
  }
  for (QPushButton* button : {cmdRepeat, cmdSound, cmdOK, cmdStorno}) {
    LetButtonSpeak(button, events(), speech(), title_);
  }
  LetButtonSpeak(chkAlarm, events(), speech(), title_);
  connect(MMControl1, &MMControl::RecordingEnded, this, &frmSchedule::OnRecordingEnded);
  connect(MMControl1, &MMControl::PlayFailed, this, [this] { dialogs().Warn(tr("chyba při práci se zvukem")); });
  connect(chkAlarm, &QCheckBox::clicked, this, [this] { CheckAlarmTime(); });
  connect(Image2, &BellPicture::Click, this, [this] { Image2_Click(); });
}

void frmSchedule::AnnounceField(QWidget* control, std::function<QString()> prefix, std::function<QString()> text) {
  events().GotFocus(control, [this, prefix = std::move(prefix), text = std::move(text)] {
    title_.FocusRead(speech(), prefix(), text());
  });
}

void frmSchedule::ConnectFields() {
  const auto caption = [](const QLabel* label) { return [label] { return label->text(); }; };
  const auto textOf = [](const QLineEdit* field) { return [field] { return field->text(); }; };
  events().GotFocus(Text1, [this] { Text1_GotFocus(); });
  AnnounceField(Text3, caption(lblTime), textOf(Text3));
  AnnounceField(
      Text4, [] { return tr("Ukončení:"); }, textOf(Text4));
  AnnounceField(txtPos, caption(lblPos), textOf(txtPos));
  AnnounceField(
      Text2, [] { return QString(); },
      [this] { return Text2->text().isEmpty() ? tr("bez nahrávky") : tr("nahrán zvuk"); });

  for (QLineEdit* field : {Text3, Text4}) {
    events().KeyDown(field, [this, field](Key& key) {
      if (!key.Is(Qt::Key_Return)) return;
      key.Swallow();
      PickDateInto(field);
    });
  }
  ConnectPageKeys();
  ConnectAlarmFields();

  connect(Text1, &NoteBox::Refused, this, [this] { speech().Signal(Speech::Refused); });
  connect(Text2, &QLineEdit::inputRejected, this, [this] { speech().Signal(Speech::Refused); });
  MakeTextBox(Text1, 0, events(), speech());
  for (QLineEdit* field : {Text3, Text4, Text5, Text2, txtPos}) MakeTextBox(field, 0, events(), speech());
}

void frmSchedule::ConnectPageKeys() {
  // The page keys have moved to another record by now; in the text they must not be taken for a move of the cursor.
  events().KeyUp(Text1, [](Key& key) {
    if (IsPageKey(key)) key.Swallow();
  });
  events().KeyUp(Text3, [this](Key& key) {
    if (IsPageKey(key) && !bNew) speech().Say(StartSpeech(Text3->text(), Now()));
  });
  events().KeyUp(txtPos, [this](Key& key) {
    if (IsPageKey(key)) speech().Say(txtPos->text());
  });
}

void frmSchedule::ConnectAlarmFields() {
  AnnounceField(
      cmbUserUnit, [this] { return lblAlarm->text(); }, [this] { return cmbUserUnit->currentText(); });
  AnnounceField(
      cmbAlarmUnit, [] { return QString(); }, [this] { return cmbAlarmUnit->currentText(); });
  AnnounceField(
      Text5, [this] { return cmbAlarmUnit->currentText(); }, [this] { return Text5->text(); });
  for (ChoiceList* list : {cmbUserUnit, cmbAlarmUnit}) {
    MakeComboBox(list, events(), speech());
    const auto sayLine = [this, list] { speech().Say(list->currentText()); };
    connect(list, &ChoiceList::Opened, this, sayLine);
    // The line is chosen only when the list has been put away.
    connect(list, &ChoiceList::Closed, this, sayLine, Qt::QueuedConnection);
    connect(list, &QComboBox::textHighlighted, this, [this, list](const QString& line) {
      if (list->view()->isVisible()) speech().Say(line);
    });
    events().GotFocus(list, [this, list] { listTextBefore_ = list->currentText(); });
    events().KeyDown(list, [this, list](Key&) { listTextBefore_ = list->currentText(); });
    events().KeyUp(list, [this, list](Key& key) {
      if (IsListKey(key) || list->currentText() != listTextBefore_) speech().Say(list->currentText());
      listTextBefore_ = list->currentText();
    });
  }
  connect(cmbUserUnit, &QComboBox::currentIndexChanged, this, [this] { cmbUserUnit_Click(); });
  connect(cmbAlarmUnit, &QComboBox::currentIndexChanged, this, [this](int index) { AlarmUnitIndex = index; });
  Text5->setAcceptDrops(false);
  Text5->setContextMenuPolicy(Qt::NoContextMenu);
  events().KeyDown(Text5, [this](Key& key) { Text5_KeyDown(key); });
  events().KeyPress(Text5, [this](Key& key) { Text5_KeyPress(key); });
  events().KeyUp(Text5, [this](Key& key) { Text5_KeyUp(key); });
}

}  // namespace talnik
