#pragma once

#include "dates/Date.h"

#include <QHash>
#include <QSet>
#include <QString>

#include <optional>
#include <vector>

namespace talnik {

class Store;

/// Remembers, for as long as the store stays open, how the last rebuild left the spawned rows, so that the next one
/// need only look at series that have been written to, or of which a date has passed.
class SpawnLedger {
 public:
  /// What a rebuild found of one root: the first date that its rule yields, held by an exception or not.
  struct Line {
    QString guid;
    std::optional<Date> firstDate;
  };

  explicit SpawnLedger(Store& store) : store_(store) {}

  /// Compares what is remembered with the present. False when every row must be looked at.
  bool Read(const Date& now);

  /// After a good Read: true when every row stands as it should.
  bool NothingToDo() const { return written_.isEmpty() && (!firstDate_ || *firstDate_ >= now_); }
  /// After a good Read: the guids of rows of series that have been written to.
  const QSet<QString>& Written() const { return written_; }
  /// After a good Read: true when a date of the series has passed since, or its root is new.
  bool HasMovedOn(const QString& guid) const;

  /// After Read: from here on every write is noticed.
  void BeginLook();
  /// True while nobody has written to series since BeginLook, and other programs nothing at all since Read.
  bool IsUnwritten();

  /// After Read: remembers that now every row stands as it should.
  void Write(const std::vector<Line>& lines);

 private:
  std::optional<qint64> Version();
  bool ReadState();
  void ReadSeries();

  Store& store_;
  Date now_;
  std::optional<qint64> version_;  ///< of what other programs have written
  qint64 look_ = 0;
  QSet<QString> written_;
  QHash<QString, std::optional<Date>> firstDates_;
  std::optional<Date> firstDate_;  ///< of all
};

}  // namespace talnik
