#include "sync/SyncDriver.h"

#include "platform/CodePage.h"
#include "recurrence/RecurrPopulate.h"
#include "shell/VoiceDialog.h"
#include "shell/cSetting.h"
#include "shell/frmProgress.h"
#include "store/Repair.h"
#include "store/Store.h"
#include "sync/AgentWords.h"
#include "sync/ExchangeFile.h"
#include "sync/SyncFiles.h"

#include <QApplication>
#include <QEvent>
#include <QFile>
#include <QLabel>
#include <QLineEdit>

#include <algorithm>
#include <array>
#include <utility>

namespace talnik {

namespace {

constexpr int MostLooksForNoData = 500;
constexpr int MostLooksForData = 11;
constexpr int BetweenLooks = 100;
constexpr int BetweenTrials = 200;
constexpr qsizetype LinesOfAMoment = 20;

/// While the store is being merged, only the window of its progress takes keys: what another one wrote meanwhile would
/// be undone with the merge.
class OnlyThisWindow : public QObject {
 public:
  explicit OnlyThisWindow(const QWidget* window) : window_(window) { qApp->installEventFilter(this); }

  bool eventFilter(QObject* watched, QEvent* event) override {
    static constexpr std::array held = {QEvent::KeyPress,
                                        QEvent::ShortcutOverride,
                                        QEvent::Shortcut,
                                        QEvent::MouseButtonPress,
                                        QEvent::MouseButtonDblClick,
                                        QEvent::ContextMenu,
                                        QEvent::Close};
    const auto* widget = qobject_cast<QWidget*>(watched);
    if (!widget || widget->window() == window_) return false;
    return std::find(held.begin(), held.end(), event->type()) != held.end();
  }

 private:
  const QWidget* window_;
};

QString DataError(const QString& path, const QString& reason) {
  return SyncDriver::tr("Chyba dat: ") + path + u". "_qs + reason;
}

}  // namespace

SyncDriver::SyncDriver(SyncSurroundings surroundings) : world_(std::move(surroundings)) {
  timer_.setSingleShot(true);
  connect(&timer_, &QTimer::timeout, this, [this] {
    if (const Step step = std::exchange(next_, nullptr)) (this->*step)();
  });
}

SyncDriver::~SyncDriver() = default;

void SyncDriver::After(int milliseconds, Step step) {
  next_ = step;
  timer_.start(milliseconds);
}

void SyncDriver::Start(bool silent) {
  if (std::exchange(running_, true)) return;
  world_.SilentSync = silent;
  words_ = {};
  lastSpoken_.clear();
  lastTotal_ = 0;
  looks_ = 0;
  form_ = std::make_unique<frmProgress>(world_.services, tr("Synchronizace"), world_.mainWindow);
  connect(form_.get(), &QDialog::finished, this, [this] { Cancel(); });
  if (!silent) {
    form_->setWindowTitle(tr("Synchronizace s kalendářem Google"));
    form_->Open(Qt::NonModal);
  }
  if (running_ && form_) Prepare();
}

void SyncDriver::Prepare() {
  SyncBackup(world_.paths);
  if (!WriteOurSide()) return;
  if (world_.services.setting.User.isEmpty()) return Finish(tr("Chybí údaje pro přihlášení."));
  if (!OpenMailbox() || !WriteRequest()) return;
  QFile::remove(world_.paths.GgData);
  AwaitNoData();
}

/// What the agent is not told of it would take for deleted: a store that cannot be read ends the run, and rows that
/// came without an identity since the start, from a file, get one.
bool SyncDriver::WriteOurSide() {
  qint64 lines = 0;
  QString reason;
  const auto text = RepairSchedule(world_.store) ? ExportDataForGoogle(world_.store, lines) : std::nullopt;
  if (!text) {
    Finish(DataError(world_.paths.Store, {}));
    return false;
  }
  if (WriteExchangeFile(world_.paths.LmData, *text, world_.codePage, reason)) return true;
  Finish(DataError(world_.paths.LmData, reason));
  return false;
}

bool SyncDriver::OpenMailbox() {
  // A name of its own for each run: an agent that was given up may still write to the box of its own run.
  const QString process = QString::number(QCoreApplication::applicationPid());
  txtCallback_ = world_.mailbox(u"callback-"_qs + process + u'-' + QString::number(++runs_));
  txtCallback_->Changed = [this] { Hear(); };
  if (txtCallback_->Open()) return true;
  Finish(tr("Nelze se spojit s převodní aplikací."));
  return false;
}

bool SyncDriver::WriteRequest() {
  QString reason;
  const AgentRequest request{.action = AgentRequest::Action::Sync,
                             .sourceRule = world_.services.setting.SourceRule,
                             .callback = txtCallback_->Address()};
  if (WriteAgentRequest(world_.paths, request, world_.codePage, reason)) return true;
  Finish(DataError(world_.paths.DataFolder, reason));
  return false;
}

/// The old file of the calendar must be gone; after a while the run goes on regardless.
void SyncDriver::AwaitNoData() {
  if (!FileExists(world_.paths.GgData) || ++looks_ > MostLooksForNoData) return Launch();
  After(BetweenLooks, &SyncDriver::AwaitNoData);
}

void SyncDriver::Launch() {
  looks_ = 0;
  form_->Label1->setText(tr("Spojuji se s Googlem"));
  const QString& agent = world_.paths.SyncAgent;
  if (!FileExists(agent)) return Finish(tr("Nelze najít převodní aplikaci: ") + agent);
  if (!StartAgent()) return Finish(tr("Nelze spustit převodní aplikaci: ") + agent);
}

bool SyncDriver::StartAgent() {
  return world_.shell.Start(world_.paths.SyncAgent, {world_.paths.AppFolder});
}

void SyncDriver::Hear() {
  const QString word = txtCallback_->Text();
  txtCallback_->SetText(QString());
  if (word.isEmpty() || words_.AgentDone || words_.isError) return;
  if (word.startsWith(u'%')) {
    words_.progress = word;
  } else if (!word.startsWith(u'#')) {
    words_.status = word;
  }
  words_.AgentDone = word == u"#Done"_qs;
  words_.isError = word == u"#Error"_qs;
  // Not from within the box: what a word sets off may close it.
  if (!std::exchange(listening_, true)) After(0, &SyncDriver::Listen);
}

void SyncDriver::Listen() {
  listening_ = false;
  if (words_.status) ShowStatus(*std::exchange(words_.status, std::nullopt));
  if (words_.progress) ShowProgress(*std::exchange(words_.progress, std::nullopt));
  if (!running_) return;  // given up while the bar was drawn
  if (words_.isError) return FinishWithError();
  if (words_.AgentDone) AwaitData();
}

void SyncDriver::ShowStatus(const QString& status) {
  form_->ShowStatus(status);
  if (world_.SilentSync || status == lastSpoken_) return;
  lastSpoken_ = status;
  world_.services.speech.Say(status);
}

/// A word that names no total counts on the last one.
void SyncDriver::ShowProgress(const QString& word) {
  const auto [step, total] = ReadAgentProgress(word);
  if (total != 0) lastTotal_ = total;
  if (lastTotal_ > 0) form_->SetShape(WholeSteps(step), WholeSteps(lastTotal_));
}

void SyncDriver::AwaitData() {
  if (FileExists(world_.paths.GgData)) return Merge();
  if (looks_++ == MostLooksForData) return Finish(tr("Vypršel čas pro získání dat. Zopakujte žádost později."));
  After(BetweenLooks, &SyncDriver::AwaitData);
}

void SyncDriver::Merge() {
  const auto text = ReadTheirSide();
  if (!text) return;
  bool kept = false;
  bool alarmsMoved = false;
  SyncTally tally;
  const bool begun = world_.whileTheStoreIsOurs([&] {
    merging_ = true;
    kept = world_.store.InTransaction([&] {
      GoogleMerge merge(world_.store, world_.timeZone.Biases(), Date::FromQDateTime(world_.services.clock.Now()));
      const bool applied = Apply(*text, merge, alarmsMoved);
      tally = merge.Tally();
      return applied;
    });
    merging_ = false;
  });
  if (!begun) return After(BetweenTrials, &SyncDriver::Merge);
  if (!running_) return;  // the program has ended meanwhile
  if (!kept) return Finish();
  Conclude(tally, alarmsMoved);
}

/// A file that cannot be read is not an empty one, which would delete everything.
std::optional<QString> SyncDriver::ReadTheirSide() {
  QString reason;
  auto text = ReadExchangeFile(world_.paths.GgData, world_.codePage, reason);
  if (!text) Finish(DataError(world_.paths.GgData, reason));
  return text;
}

/// False when the store is to stay as it was: given up, or the store failed.
bool SyncDriver::Apply(const QString& text, GoogleMerge& merge, bool& alarmsMoved) {
  const OnlyThisWindow onlyProgress(form_.get());
  ExchangeLines lines(text);
  const qsizetype last = lines.Count() - 1;
  const bool showsProgress = last >= LinesOfAMoment;
  if (showsProgress) {
    form_->ShowStatus(tr("Načítání do talníku"));
    world_.services.speech.Say(form_->Text1->text());
  }
  for (qsizetype step = 1; !lines.AtEnd(); ++step) {
    if (form_->Cancelled() || !running_) return false;
    if (merge.ImportDataGoogle(lines.Next().toString()) == AlarmAdded) alarmsMoved = true;
    if (showsProgress) form_->SetShape(step, last);
  }
  if (!merge.LinesTaken()) return false;
  if (merge.RebuildFlag() && !RebuildOccurrences(world_.store, merge.ForRebuild())) return false;
  const bool swept = merge.DeleteMissingEvents();
  alarmsMoved = alarmsMoved || merge.AlarmsTouched();
  return swept;
}

void SyncDriver::Conclude(const SyncTally& tally, bool alarmsMoved) {
  if (alarmsMoved) world_.registerAlarms();
  const Paths& paths = world_.paths;
  qint64 lines = 0;
  QString reason;
  const auto text = ExportDataForGoogle(world_.store, lines);
  if (!text) return Finish(DataError(paths.Store, {}));
  if (!WriteExchangeFile(paths.LmDataSaved, *text, world_.codePage, reason)) {
    return Finish(DataError(paths.LmDataSaved, reason));
  }
  if (!CopyAsWhole(paths.GgData, paths.GgDataSaved)) return Finish(DataError(paths.GgDataSaved, {}));
  const Date now = Date::FromQDateTime(world_.services.clock.Now());
  if (!WriteSyncLog(paths, tally, now, world_.codePage, reason)) return Finish(DataError(paths.DataFolder, reason));
  Finish();
}

/// In the middle of a merge the merge itself ends the run.
void SyncDriver::Cancel() {
  if (running_ && !merging_) Finish();
}

void SyncDriver::Abandon() {
  running_ = false;
  timer_.stop();
  txtCallback_.reset();
}

void SyncDriver::EndRun() {
  timer_.stop();
  txtCallback_.reset();
  listening_ = false;
  form_->disconnect(this);
  form_->Unload();
  // The way here may lead through one of its own events.
  form_.release()->deleteLater();
}

void SyncDriver::Finish(const QString& message) {
  EndRun();
  if (!message.isEmpty()) world_.services.dialogs.Warn(message);
  world_.SilentSync = false;
  running_ = false;
}

/// An automatic run that ends like this leaves the day list silent until the next one that ends well.
void SyncDriver::FinishWithError() {
  EndRun();
  running_ = false;
  world_.services.dialogs.Warn(tr("Chyba zápisu. Zkontrolujte přístupové údaje."));
}

}  // namespace talnik
