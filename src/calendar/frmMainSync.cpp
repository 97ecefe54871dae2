#include "calendar/MainServices.h"
#include "calendar/StoreTaken.h"
#include "calendar/frmMain.h"
#include "sync/SyncFiles.h"

namespace talnik {

void frmMain::PrepareSync() {
  sync_ = std::make_unique<SyncDriver>(SyncSurroundings{
      .store = *store_,
      .services = services(),
      .paths = paths_,
      .codePage = *platform_.codePage,
      .timeZone = *platform_.timeZone,
      .shell = *platform_.shell,
      .mailbox = platform_.mailbox,
      .SilentSync = view_.SilentSync,
      .whileTheStoreIsOurs = [this](const std::function<void()>& merge) { return MergeIntoStore(merge); },
      .registerAlarms = [this] { alarms_->RegisterAlarm(); },
      .mainWindow = this});
  passwords_ = std::make_unique<PasswordHandOver>(HandOverSurroundings{
      .paths = paths_, .codePage = *platform_.codePage, .shell = *platform_.shell, .mailbox = platform_.mailbox});
}

/// False while another long job has the store.
bool frmMain::MergeIntoStore(const std::function<void()>& merge) {
  if (storeIsTaken_) return false;
  const StoreTaken taken(storeIsTaken_, ended_, {&Timer1, &AutSync_Timer});
  merge();
  return true;
}

void frmMain::mnuSyncLog_Click() {
  RunModal(Afterwards::IsSilent, [this] { dialogs().Warn(SyncReport(paths_, *platform_.codePage)); });
}

}  // namespace talnik
