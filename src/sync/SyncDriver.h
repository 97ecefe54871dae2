#pragma once

#include "platform/Clock.h"
#include "platform/Mailbox.h"
#include "platform/Shell.h"
#include "platform/TimeZone.h"
#include "shell/FormServices.h"
#include "shell/Paths.h"
#include "sync/GoogleMerge.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

namespace talnik {

class CodePage;
class Store;
class frmProgress;

/// What a synchronisation asks of the rest of the program.
struct SyncSurroundings {
  Store& store;
  FormServices& services;
  const Paths& paths;
  const CodePage& codePage;
  TimeZone& timeZone;
  Shell& shell;
  std::function<std::unique_ptr<Mailbox>(const QString& name)> mailbox;
  bool& SilentSync;  ///< while it is set, refreshing the day says nothing
  /// Runs the merge while nothing else writes to the store; false when that cannot be now.
  std::function<bool(const std::function<void()>& merge)> whileTheStoreIsOurs;
  std::function<void()> registerAlarms;
  QWidget* mainWindow;
};

/// One synchronisation after the other: writes what the agent needs, starts it, follows its words, merges what it has
/// brought. Nothing waits here: between two steps the program goes on, so windows that are open can be closed.
class SyncDriver : public QObject {
  Q_OBJECT

 public:
  explicit SyncDriver(SyncSurroundings surroundings);
  ~SyncDriver() override;

  /// Begins a run; a silent one shows no window. Nothing happens while one is under way.
  void Start(bool silent);
  /// The program ends: the run is dropped where it stands.
  void Abandon();

  bool SyncRunning() const { return running_; }

 private:
  /// The newest words of the agent that have not been looked at. A word that is overtaken by another one of its kind
  /// within the same moment is lost, as in a box that holds one text.
  struct Words {
    std::optional<QString> status;
    std::optional<QString> progress;
    bool isError = false;
    bool AgentDone = false;
  };
  using Step = void (SyncDriver::*)();

  void Prepare();
  bool WriteOurSide();
  bool WriteRequest();
  void AwaitNoData();
  void Launch();
  bool StartAgent();
  bool OpenMailbox();
  void Hear();
  void Listen();
  void ShowStatus(const QString& status);
  void ShowProgress(const QString& word);
  void AwaitData();
  void Merge();
  std::optional<QString> ReadTheirSide();
  bool Apply(const QString& text, GoogleMerge& merge, bool& alarmsMoved);
  void Conclude(const SyncTally& tally, bool alarmsMoved);

  void After(int milliseconds, Step step);
  void Cancel();
  void EndRun();
  /// The run is over, with a message for the user or without one.
  void Finish(const QString& message = {});
  void FinishWithError();

  SyncSurroundings world_;
  std::unique_ptr<frmProgress> form_;
  std::unique_ptr<Mailbox> txtCallback_;
  QTimer timer_;
  Step next_ = nullptr;
  Words words_;
  QString lastSpoken_;
  double lastTotal_ = 0;
  int looks_ = 0;  ///< how often a file has been looked for
  int runs_ = 0;
  bool running_ = false;
  bool listening_ = false;
  bool merging_ = false;
};

}  // namespace talnik
