#pragma once

#include "dates/Date.h"

#include <optional>

namespace talnik {

class Store;

/// Remembers, for as long as the store stays open, how the last rebuild left it, so that the next one need not look at
/// any row while nobody has written since and no date has passed.
class RebuildNote {
 public:
  explicit RebuildNote(Store& store) : store_(store) {}

  /// True when a rebuild at `now` would find every row as it should be. Call it before Write.
  bool StillHolds(const Date& now);

  /// Notes that now every row is as it should be. `first` is the first date that any rule yields, held by an exception
  /// or not.
  void Write(const Date& now, const std::optional<Date>& first);

 private:
  Store& store_;
  std::optional<qint64> version_;  ///< of what other programs have written
};

}  // namespace talnik
