#pragma once

#include "dates/Date.h"

#include <QHash>
#include <QString>

#include <optional>
#include <vector>

namespace talnik {

class Store;

/// The days that exceptions and tombstones hold: no spawned row of their series may stand there.
class ExceptionDays {
 public:
  /// Nothing when the store could not be read.
  static std::optional<ExceptionDays> Read(Store& store);

  /// The days of one series as serial numbers, in order.
  std::vector<std::int64_t> OfSeries(const QString& guid) const;

 private:
  using Days = std::vector<std::int64_t>;

  bool ReadRoots(Store& store);
  Days Fitting(const QString& guid) const;

  QHash<QString, Days> byBase_;  ///< by what stands in front of the "_" of the guid
  QHash<QString, Days> byRoot_;  ///< by the guids of the roots, unless nothing is held
};

/// Whether a series with this guid is the one that `base`, the part of a guid before its "_", names. What names no
/// series fits none.
bool NamesSeries(const QString& base, const QString& guid);

/// The serial number of the day.
std::int64_t SerialDay(const Date& date);

}  // namespace talnik
