#pragma once

#include "store/Store.h"

#include <functional>
#include <vector>

namespace talnik {

/// The rows of a statement, fixed when it is opened; each move rereads one row. A row deleted here or elsewhere stays
/// current until the next move, which passes over rows that are gone.
class Recordset {
 public:
  /// Nothing when the store could not be read.
  static std::unique_ptr<Recordset> Open(Store& store, const Statement& statement);

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

  /// The current row as last read.
  const ScheduleRecord& Row() const;

  /// Writes the changed row in place of the current one. False when it could not be written.
  bool Update(const ScheduleRecord& changed);
  /// Adds a row behind the others without moving there. False when it could not be written.
  bool AddNew(const ScheduleRecord& record);
  bool Delete();

 private:
  explicit Recordset(Store& store) : store_(store) {}
  void Reread();

  Store& store_;
  std::vector<qint64> keys_;
  qsizetype position_ = -1;
  ScheduleRecord row_;
};

}  // namespace talnik
