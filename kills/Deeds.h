#pragma once

#include "platform/linux/IniProfile.h"
#include "platform/linux/LocaleCodePage.h"
#include "recurrence/RecurrPopulate.h"
#include "shell/cSetting.h"
#include "store/Recordset.h"
#include "store/Store.h"
#include "support/FakePlatform.h"

#include <QRandomGenerator>

namespace talnik::soak {

/// What the program does to the folder of its data, one deed after the other: all of it follows from the seed, so that
/// the same deeds can be done again elsewhere. Only identities are made up anew.
class Deeds {
 public:
  Deeds(QString folder, quint32 seed);

  static std::size_t Kinds();
  static const char* NameOf(std::size_t kind);

  /// Which kind the deed of this number is.
  static std::size_t KindOf(quint32 seed, int number);
  /// False when it was refused and, as the user is told, nothing has changed.
  bool Do(int number);

 private:
  struct Kind;
  static const std::vector<Kind>& Table();
  void Begin(int number);
  int Below(int limit) { return static_cast<int>(random_.bounded(limit)); }
  Date AnyDay();
  SpawnTime Time() const;
  QString Names() const { return folder_ + u"/Names.dat"; }
  QString NewNote();
  std::unique_ptr<Recordset> AnyRow(const Statement& statement);

  bool SaveRecord();
  bool SaveSeries();
  bool EditRecord();
  bool EditSeries();
  bool Extend();
  bool Rebuild();
  bool ChangeRule();
  bool DeleteOne();
  bool Purge();
  bool Import();
  bool Merge();
  bool SaveNames();
  bool SaveSettings();
  bool WriteExchange();

  QString folder_;
  quint32 seed_;
  int number_ = 0;
  QRandomGenerator random_;
  Store store_;
  IniProfile profile_;
  LocaleCodePage codePage_{"UTF-8"};
  test::FakeShell shell_;
};

/// Makes the folder in which the deeds begin.
bool MakeDataFolder(const QString& folder);

/// All that the folder holds, as the program finds it when it starts, identities by their order; nothing, and why, when
/// something of it is not whole. `leftovers` receives files that nobody asked for.
std::optional<QString> Contents(const QString& folder, QString& why, qint64& leftovers);

}  // namespace talnik::soak
