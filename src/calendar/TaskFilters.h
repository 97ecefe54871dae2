#pragma once

#include "dates/Date.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace talnik {

class Store;
struct Paths;

/// A command that opens the editor on a set of records, unless the set is empty.
struct TaskFilter {
  enum class Test { TasksOfDay, RecordsFromFilterDate, AllRecords, RecordsWithAlarm };

  const char* command;
  int filterMode;        ///< what the editor shows
  bool fromSelectedDay;  ///< the filter begins with the selected day
  Test test;             ///< what must hold at least one row
};

/// Nothing (nullptr) for a name that is no such command.
const TaskFilter* FindTaskFilter(const QString& command);

/// The number of rows, whatever their status: kind 0 from the filter date on, or all without one; 1 with an alarm; 2
/// all. 0 when the store cannot be read.
qint64 CountRecords(Store& store, int kind, const std::optional<Date>& filterDate = {});

/// True when the day (and the time, unless it is empty) lies in the past. A day without a time has passed when it is
/// over.
bool HasPassed(const QString& dateText, const QString& timeText, const Date& now);

/// What a synchronisation has left in the data folder; it goes when all records go.
QStringList SynchronisationFiles(const Paths& paths);

}  // namespace talnik
