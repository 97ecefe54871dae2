#pragma once

#include "../TenYears.h"
#include "Growth.h"

#include <QString>
#include <QTemporaryDir>

namespace talnik::bench {

/// The stores of single events that the subjects share, each made at its first use. The events of a day are as many in
/// a small store as in a large one, which goes on for more years.
class GrowthStores {
 public:
  /// Around the now of the fakes.
  static Span SpanOf(int rows);

  /// A folder in which MainDesk finds the store.
  QString Folder(int rows);
  QString Path(int rows);
  /// A place for a file of one's own.
  QString Scratch(const char* name) const { return folder_.filePath(QString::fromLatin1(name)); }

 private:
  QTemporaryDir folder_;
};

void MeasureStore(GrowthTable& table, GrowthStores& stores);
void MeasureExchange(GrowthTable& table, GrowthStores& stores);
void MeasureSeries(GrowthTable& table, GrowthStores& stores);
void MeasureMerge(GrowthTable& table, GrowthStores& stores);
void MeasureWindows(GrowthTable& table, GrowthStores& stores);

}  // namespace talnik::bench
