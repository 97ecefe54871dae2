#include "calendar/frmDayView.h"

#include "editor/NoteFiles.h"
#include "editor/StoreFailures.h"
#include "recurrence/EditSeries.h"
#include "recurrence/frmDeleteRecurrentEvent.h"
#include "shell/TextControls.h"
#include "shell/VoiceDialog.h"
#include "shell/cSetting.h"
#include "store/Recordset.h"
#include "store/Text.h"

#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QVBoxLayout>

#include <utility>

namespace talnik {
namespace {

constexpr int DayViewTag = 1713;
constexpr int TasksOption = 0;
constexpr int FreeTimeOption = 1;

bool MovesInList(const Key& key) {
  switch (key.code) {
    case Qt::Key_Down:
    case Qt::Key_Up:
    case Qt::Key_PageDown:
    case Qt::Key_PageUp:
    case Qt::Key_Home:
    case Qt::Key_End:
      return true;
    default:
      return false;
  }
}

}  // namespace

frmDayView::frmDayView(FormServices& services, DayViewContext context, QWidget* parent)
    : Form(services, u"frmDayView"_qs, DayViewTag, parent), context_(std::move(context)) {
  BuildControls();
  ConnectList();
}

void frmDayView::BuildControls() {
  auto* column = new QVBoxLayout(this);
  Frame1 = new QGroupBox(tr("Výběr"), this);
  NameControl(Frame1, u"Frame1"_qs);
  auto* options = new QVBoxLayout(Frame1);
  const std::array<QString, 2> captions{tr("Ú&koly"), tr("&Volný čas")};
  const int chosen = services().setting.DayViewFreeTime == FreeTimeOption ? FreeTimeOption : TasksOption;
  for (const int option : {TasksOption, FreeTimeOption}) {
    const auto place = static_cast<std::size_t>(option);
    auto* button = new QRadioButton(captions.at(place), Frame1);
    NameControl(button, u"optFreeTime(%1)"_qs.arg(option));
    button->setChecked(option == chosen);
    events().GotFocus(button, [this, button] {
      // A focus that comes with a choice is spoken by the choice.
      if (button->isChecked() && !optionSaid_) title_.FocusRead(speech(), QString(), button->text().remove(u'&'));
    });
    LetOptionAnswer(button, events(), speech());
    connect(button, &QRadioButton::toggled, this, [this, option](bool checked) {
      if (checked) optFreeTime_Click(option);
    });
    // Else Enter would press the first button of the window.
    events().KeyDown(button, [this](Key& key) {
      if (!key.Is(Qt::Key_Return)) return;
      key.Swallow();
      List1->setFocus();
    });
    options->addWidget(button);
    optFreeTime.at(place) = button;
  }
  column->addWidget(Frame1);
  List1 = new ListBox(this);
  NameControl(List1, u"List1"_qs, tr("Denní přehled"));
  column->addWidget(List1);
  cmdInsert = MakeButton(u"cmdInsert"_qs, tr("Vložit nový úkol - Ins"), &frmDayView::cmdInsert_Click);
  cmdGoTo = MakeButton(u"cmdGoTo"_qs, tr("Ukázat"), &frmDayView::cmdGoTo_Click);
  cmdDelete = MakeButton(u"cmdDelete"_qs, tr("Smazat - F8"), &frmDayView::cmdDelete_Click);
  cmdOK = MakeButton(u"cmdOK"_qs, tr("Zavřít"), &frmDayView::cmdOK_Click);
}

QPushButton* frmDayView::MakeButton(const QString& name, const QString& caption, void (frmDayView::*click)()) {
  auto* button = new QPushButton(caption, this);
  NameControl(button, name);
  LetButtonSpeak(button, events(), speech(), title_);
  connect(button, &QPushButton::clicked, this, [this, click] { (this->*click)(); });
  layout()->addWidget(button);
  return button;
}

void frmDayView::ConnectList() {
  events().GotFocus(List1, [this] { title_.FocusRead(speech(), QString(), SelectedLine()); });
  events().KeyDown(List1, [this](Key& key) { List1_KeyDown(key); });
  events().KeyUp(List1, [this](Key& key) { List1_KeyUp(key); });
  connect(List1, &QListWidget::itemClicked, this, [this] { SayLine(); });
}

void frmDayView::Open() {
  GetSpareTime();
  List1->setFocus();
  title_.Set(windowTitle());
  ShowModal();
}

bool frmDayView::ShowsFreeTime() const {
  return optFreeTime[FreeTimeOption]->isChecked();
}

void frmDayView::GetSpareTime() {
  cmdGoTo->setEnabled(!ShowsFreeTime());
  setWindowTitle(DayOverviewCaption(context_.day));
  context_.extendSeries();
  const auto items = ItemsOfDay(context_.store, context_.day, deleted_);
  items_ = items.value_or(QList<DayItem>());
  if (items && ShowsFreeTime()) items_ = WithFreeTime(items_, context_.day);
  List1->clear();
  for (const DayItem& item : std::as_const(items_)) List1->addItem(FormatItem(item, true));
  if (!items_.isEmpty()) List1->SetListIndex(0);
  if (!items) dialogs().Tell(tr("Chyba dat: ") + context_.store.Path());
}

const DayItem* frmDayView::Selected() const {
  const int index = List1->ListIndex();
  return index >= 0 && index < items_.size() ? &items_[index] : nullptr;
}

QString frmDayView::SelectedLine() const {
  return Selected() ? List1->Text() : NoTasksText();
}

void frmDayView::SayLine() {
  speech().Say(SelectedLine());
}

/// Lets the user hear where he is after a window above this one; a list that only now gets the focus says it by itself.
void frmDayView::ReturnToList() {
  if (List1->hasFocus()) return SayLine();
  List1->setFocus();
}

void frmDayView::List1_KeyDown(Key& key) {
  lineAtKeyDown_ = List1->ListIndex();
  const bool pastStart = key.Is(Qt::Key_Up) && lineAtKeyDown_ <= 0;
  const bool pastEnd = key.Is(Qt::Key_Down) && lineAtKeyDown_ >= List1->ListCount() - 1;
  if (pastStart || pastEnd) speech().Signal(Speech::EndOfList);
  const std::pair<int, void (frmDayView::*)()> commands[] = {{Qt::Key_Insert, &frmDayView::cmdInsert_Click},
                                                             {Qt::Key_Return, &frmDayView::cmdGoTo_Click},
                                                             {Qt::Key_F8, &frmDayView::cmdDelete_Click}};
  for (const auto& [code, command] : commands) {
    if (!key.Is(code)) continue;
    key.Swallow();
    return (this->*command)();
  }
}

void frmDayView::List1_KeyUp(Key& key) {
  // Letters and digits move in the list as well.
  if (!MovesInList(key) && List1->ListIndex() == lineAtKeyDown_) return;
  lineAtKeyDown_ = List1->ListIndex();
  if (ShowsFreeTime()) return SayLine();
  speech().PlaySound(QString());
  SayLine();
  PreviewNote();
}

/// Where nothing speaks, the voice note of the task is heard.
void frmDayView::PreviewNote() {
  const DayItem* item = Selected();
  const QString note = item ? StripAtNul(item->wav) : QString();
  if (!note.isEmpty() && !speech().IsSpeaking()) speech().PlaySound(NotePath(note, context_.recordFolder));
}

void frmDayView::optFreeTime_Click(int option) {
  services().setting.DayViewFreeTime = option;
  GetSpareTime();
  speech().Say(optFreeTime.at(static_cast<std::size_t>(option))->text().remove(u'&'));
  optionSaid_ = true;
  QTimer::singleShot(0, this, [this] { optionSaid_ = false; });
}

void frmDayView::cmdInsert_Click() {
  const DayItem* item = Selected();
  context_.newTask(this, item && item->isGap ? item->start : std::nullopt);
  if (!isVisible()) return;
  GetSpareTime();
  ReturnToList();
}

void frmDayView::cmdGoTo_Click() {
  const auto before = RecordsBefore(items_, List1->ListIndex());
  if (!cmdGoTo->isEnabled() || !before) return speech().Signal(Speech::Refused);
  context_.showTasks(this, *before);
  if (!isVisible()) return;
  GetSpareTime();
  ReturnToList();
}

void frmDayView::cmdDelete_Click() {
  const DayItem* selected = Selected();
  if (!selected || selected->isGap) return speech().Signal(Speech::Refused);
  const DayItem item = *selected;
  if (dialogs().Ask(DeleteItemQuestion(SelectedLine()), Dialogs::Default::Second) && isVisible()) DeleteItem(item);
  if (isVisible()) ReturnToList();
}

void frmDayView::DeleteItem(const DayItem& item) {
  const auto rows = FindItem(context_.store, item);
  if (!rows) {
    speech().Signal(Speech::Refused);
  } else if (DeleteRow(*rows)) {
    deleted_ << item;
    DeleteNoteOfItem(context_.store, item, context_.recordFolder);
  }
  if (isVisible()) GetSpareTime();
}

/// The record that the question named, and no other one: an occurrence becomes a tombstone, for else it would be back
/// at the next rebuild of its series. False when it is still there.
bool frmDayView::DeleteRow(Recordset& rows) {
  const ScheduleRecord row = rows.Row();
  if (row.status == StatusDeleted) return true;
  if (row.status == StatusRoot) return DeleteRoot(row);
  return Deleted([&] {
    if (WayToDelete(row) == DeleteWay::Single) return DeleteSingle(rows);
    return DeleteOccurrence(context_.store, rows, context_.timeZone.Biases());
  });
}

/// A root stands for the whole series, which must not go unasked.
bool frmDayView::DeleteRoot(const ScheduleRecord& root) {
  context_.recurrChoice = RecurrNone;
  frmDeleteRecurrentEvent(services(), context_.recurrChoice, this).Run();
  if (context_.recurrChoice != RecurrAll) return context_.recurrChoice == RecurrOnlyThis;
  return Deleted([&] { return DeleteWholeSeries(context_.store, StripAtNul(root.guid), context_.recordFolder); });
}

/// Runs a deletion and tells of its failure. False when nothing was deleted.
bool frmDayView::Deleted(const std::function<DeleteOutcome()>& deletion) {
  DeleteOutcome outcome;
  QString failure;
  {
    const StoreFailures failures(context_.store);
    outcome = deletion();
    failure = failures.Message();
  }
  if (outcome.alarmsTouched) context_.registerAlarm();
  if (!outcome.done) dialogs().Warn(failure);
  return outcome.done;
}

}  // namespace talnik
