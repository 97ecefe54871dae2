#pragma once

#include "dates/Date.h"
#include "sync/GoogleMerge.h"

#include <QString>

namespace talnik {

class CodePage;
struct Paths;

/// The request that tells the agent what to do, and where.
struct AgentRequest {
  enum class Action { Sync, Encrypt };
  Action action = Action::Sync;
  int sourceRule = 1;  ///< which side wins
  QString callback;    ///< address of the mailbox
};

/// Writes the request file. False, and the reason for the user, when it could not be written.
bool WriteAgentRequest(const Paths& paths, const AgentRequest& request, const CodePage& codePage, QString& reason);

/// Copies the exchange files and the store as they stand before a run, over those of the run before. What is missing or
/// cannot be copied is passed over.
void SyncBackup(const Paths& paths);

/// Replaces a file by a copy of another one, for the user alone. False when it could not be done; the old one stays.
bool CopyAsWhole(const QString& from, const QString& to);

/// Writes the log of a finished run. False, and the reason for the user, when it could not be written.
bool WriteSyncLog(const Paths& paths, const SyncTally& tally, const Date& now, const CodePage& codePage,
                  QString& reason);

/// What the last finished run has changed, in words.
QString SyncReport(const Paths& paths, const CodePage& codePage);

}  // namespace talnik
