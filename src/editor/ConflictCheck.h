#pragma once

#include "store/Store.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace talnik {

/// Stands for the end of a new record that has none: "0:00:00".
QString NoEndText();

/// The time proposed for a new record. The texts are told as they are.
struct ProposedTime {
  QString startText;
  QString endText;
  Date start;
  std::optional<Date> end;
};

/// Nothing when a text is no date. `end` may be NoEndText.
std::optional<ProposedTime> ReadProposedTime(const QString& start, const QString& end, const Date& today);

/// What is to be told of one row: nothing, one conflict, or the same conflict twice when the row begins with the
/// proposed time and spans it.
QStringList ConflictsWith(const ScheduleRecord& row, const ProposedTime& proposed);

/// Every row that can collide with the proposed time, by start; most of them do.
Statement RowsNear(const ProposedTime& proposed);

/// What is to be told of the whole store, by start. Empty when the store cannot be read.
QStringList TimeConflicts(Store& store, const QString& start, const QString& end, const Date& today);

}  // namespace talnik
