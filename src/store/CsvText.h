#pragma once

#include "store/ScheduleRecord.h"

#include <QString>
#include <QStringView>

#include <optional>

namespace talnik {

/// The first line of an exchange file of appointments: the titles of its eight columns, without the line's end.
QString CsvHeader();

/// Adds one row as a line to the text of a file, without the line's end. False, and nothing is added, for a row that
/// has no start. A row without an end has one column less.
bool AddCsvLine(QString& text, const ScheduleRecord& row);

/// True for a line that is meant as a row.
bool IsCsvRow(QStringView line);

/// The row that a line stands for, with nothing of a series; nothing when its start is no date. What cannot be read as
/// an end is the start, as an alarm time nothing; semicolons are cut out of the text, which separate the fields of
/// other exchange files.
std::optional<ScheduleRecord> CsvRecord(QStringView line, const Date& today);

/// The lines of a text, ended by CR LF, LF or CR.
class CsvLines {
 public:
  explicit CsvLines(QStringView text) : text_(text) {}

  bool AtEnd() const { return at_ >= text_.size(); }
  /// The next line, without its end.
  QStringView Next();
  /// How many characters have been read.
  qsizetype Position() const { return at_; }

 private:
  QStringView text_;
  qsizetype at_ = 0;
};

}  // namespace talnik
