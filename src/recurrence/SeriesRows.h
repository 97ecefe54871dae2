#pragma once

#include "recurrence/SpawnedRows.h"
#include "store/StoreRow.h"

#include <QByteArray>

#include <array>
#include <vector>

namespace talnik {

/// The columns in which a spawned row can differ from what it should be, in the order in which they are read behind
/// the key of the row.
enum SpawnColumn { Apptime, Appdur, Alarmtime, Reftime, Appointment, Recur, Wav, Spawntime, Alarm, Alarmfired, Guid };
inline constexpr std::array<const char*, 11> kSpawnColumns = {"apptime",     "appdur",     "alarmtime", "reftime",
                                                              "appointment", "recur",      "wav",       "spawntime",
                                                              "alarm",       "alarmfired", "guid"};

/// The place of a column in the rows that are read.
constexpr int PlaceOf(SpawnColumn column) {
  return column + 1;
}

class ColumnSet {
 public:
  bool Has(int column) const { return ((bits_ >> column) & 1U) != 0; }
  bool HasAny(ColumnSet columns) const { return (bits_ & columns.bits_) != 0; }
  bool IsEmpty() const { return bits_ == 0; }
  unsigned Bits() const { return bits_; }
  ColumnSet& Add(SpawnColumn column, bool add = true) {
    bits_ |= (add ? 1U : 0U) << column;
    return *this;
  }

 private:
  unsigned bits_ = 0;
};

/// What one root yields and what is there of it.
class SeriesRows {
 public:
  /// A row that is there.
  struct Existing {
    Date apptime;
    qint64 key;
    ColumnSet differs;  ///< from what the series would write at this start
  };
  /// A row that is there and is to become the row of this date in these columns.
  struct Overwrite {
    qint64 key;
    Date date;
    ColumnSet columns;
  };

  /// `held` are the serial days that are to stay free, in order.
  SeriesRows(SpawnedRows rows, const std::vector<std::int64_t>& held);

  const SpawnedRows& Rows() const { return rows_; }
  const QByteArray& Guid() const { return guid_; }
  bool IsNamed(QUtf8StringView guid) const { return guid == QUtf8StringView(guid_); }

  /// The columns in which a row of this guid that starts at `start` differs from the series' own.
  ColumnSet Differences(const StoreRow& row, const Date& start) const;
  void Found(const Existing& row) { existing_.push_back(row); }

  /// Finds out what is to be written. Rows that come out the same are left alone; others are made into those that are
  /// missing, as far as they go.
  void Compare();
  const std::vector<Overwrite>& Overwrites() const { return overwrites_; }
  const std::vector<qint64>& Surplus() const { return surplus_; }
  const std::vector<Date>& Missing() const { return missing_; }
  std::size_t Writes() const { return overwrites_.size() + surplus_.size() + missing_.size(); }
  /// The writes that change what the indexes hold.
  std::size_t IndexedWrites() const;

 private:
  void Match(std::vector<Existing>& unmatched);

  SpawnedRows rows_;
  QByteArray guid_, appointment_, recur_;  ///< as they stand in the store
  std::vector<Date> wanted_;
  std::vector<Existing> existing_;
  std::vector<Overwrite> overwrites_;
  std::vector<qint64> surplus_;
  std::vector<Date> missing_;
};

}  // namespace talnik
