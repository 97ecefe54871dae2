#pragma once

#include "store/Store.h"

#include <functional>
#include <memory>
#include <vector>

namespace talnik {

/// The rows of a "SELECT * FROM schedule ..." statement, fixed when it is opened; each move rereads one row. A row
/// deleted here or elsewhere stays current until the next move, which passes over rows that are gone. Where a move
/// cannot read the file, the current row stays, and Bof and Eof are both true until a move succeeds: no walk runs on.
class Recordset {
 public:
  /// Nothing when the store could not be read. Stands on the first row.
  static std::unique_ptr<Recordset> Open(Store& store, const Statement& statement);

  /// Without the rows that are known to be gone.
  qsizetype RecordCount() const;
  /// Counted from 0; -1 with no current row.
  qsizetype AbsolutePosition() const;
  bool Bof() const;
  bool Eof() const;

  void MoveFirst();
  void MoveLast();
  void MoveNext();      ///< from the last row to Eof
  void MovePrevious();  ///< from the first row to Bof
  /// Moves to the first row that meets the criterion; false (NoMatch) leaves the position.
  bool FindFirst(const std::function<bool(const ScheduleRecord&)>& criterion);
  /// Moves to the current row of another recordset of the same file; false leaves the position.
  bool FindRowOf(const Recordset& other);

  /// The current row as last read; an empty record with no current row.
  const ScheduleRecord& Row() const;

  /// Writes what `changed` has changed in the current row as last read; other changes made to the row meanwhile stay.
  /// False when it could not be written.
  bool Update(const ScheduleRecord& changed);
  /// Adds a row behind the others without moving there. False when it could not be written.
  bool AddNew(const ScheduleRecord& record);
  bool Delete();

 private:
  enum class Found { Yes, Gone, Unreadable };

  explicit Recordset(Store& store);
  qsizetype Size() const { return static_cast<qsizetype>(keys_.size()); }
  bool HasCurrent() const { return position_ >= 0 && position_ < Size(); }
  bool MayWrite() const;
  Found Read(qsizetype position, ScheduleRecord& row);
  void MarkGone(qsizetype position);
  void Settle(qsizetype position, int step);

  Store& store_;
  int file_;                  ///< which file the keys belong to
  std::vector<qint64> keys_;  ///< 0 where the row is gone
  qsizetype goneCount_ = 0;
  qsizetype position_ = -1;
  ScheduleRecord row_;
  bool unreadable_ = false;  ///< the last move could not read
};

}  // namespace talnik
