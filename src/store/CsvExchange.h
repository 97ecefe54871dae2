#pragma once

#include "dates/Date.h"

#include <QString>

#include <functional>

namespace talnik {

class Store;

/// Told now and then how much is done; it may let events through, but nothing may write to the store meanwhile. False
/// gives the job up.
using CsvProgress = std::function<bool(qint64 done, qint64 total)>;

enum class CsvEnd { Done, Cancelled, Failed };

struct CsvExport {
  CsvEnd end = CsvEnd::Failed;  ///< Failed: the store could not be read
  QString text;                 ///< of the file
  qint64 rows = 0;
};

/// The whole table, tombstones and roots as well, as the text of a file.
CsvExport ExportCsv(Store& store, const CsvProgress& progress);

struct CsvImport {
  CsvEnd end = CsvEnd::Failed;  ///< Failed: the store could not be read or written
  qint64 imported = 0;
  qint64 rejected = 0;     ///< without a date, or in the store already
  bool hasAlarms = false;  ///< a row with an alarm was imported
};

/// Adds the rows of a file's text whose start, end and text are not in the store yet. All of it is one transaction:
/// unless it is Done, the store is as it was and nothing is counted.
CsvImport ImportCsv(Store& store, const QString& text, const Date& today, const CsvProgress& progress);

/// The folder of a path, without a separator at its end; empty when the path has none.
QString CsvFolder(const QString& path);

/// The path with ".csv" at its end.
QString WithCsvEnding(const QString& path);

}  // namespace talnik
