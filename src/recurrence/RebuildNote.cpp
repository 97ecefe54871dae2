#include "recurrence/RebuildNote.h"

#include "store/Store.h"

namespace talnik {

// The note stands in a temporary table, which is gone when the file is opened anew. It names the number of writes of
// this connection, and the version that other connections' writes have brought the file to.

bool RebuildNote::StillHolds(const Date& now) {
  version_.reset();
  store_.ForEachRow({u"PRAGMA data_version"_qs, {}}, [this](const StoreRow& row) {
    version_ = row.Number(0);
    return true;
  });
  if (!version_) return false;
  bool holds = false;
  const Statement note{u"SELECT moment,first FROM temp.rebuild_note WHERE version=? AND changes=total_changes()"_qs,
                       {*version_}};
  // Before the first note there is no such table, and so nothing to be read.
  store_.ForEachRow(note, [&](const StoreRow& row) {
    const auto moment = row.Moment(0);
    const auto first = row.Moment(1);
    holds = moment && *moment <= now && (!first || now <= *first);
    return true;
  });
  return holds;
}

void RebuildNote::Write(const Date& now, const std::optional<Date>& first) {
  if (!version_) return;
  const QVariant firstDate = first ? QVariant(first->Serial()) : QVariant();
  // Writing the note is one write more.
  store_.Execute(
      {u"CREATE TEMP TABLE IF NOT EXISTS rebuild_note(version INTEGER,changes INTEGER,moment REAL,first "
       u"REAL)"_qs,
       {}}) &&
      store_.Execute({u"DELETE FROM temp.rebuild_note"_qs, {}}) &&
      store_.Execute(
          {u"INSERT INTO temp.rebuild_note VALUES(?,total_changes()+1,?,?)"_qs, {*version_, now.Serial(), firstDate}});
}

}  // namespace talnik
