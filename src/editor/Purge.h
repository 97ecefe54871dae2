#pragma once

#include "dates/Date.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace talnik {

class Store;

/// The date in a start text: up to and including the first blank, or all of it.
QString PurgeDateText(const QString& startText);

QString PurgeQuestion(const QString& dateText);

struct PurgeOutcome {
  bool done = false;           ///< false: the store failed and nothing was removed
  bool alarmsTouched = false;  ///< RegisterAlarm is due
  QStringList notes;           ///< voice notes of the rows that are gone, as they stood there
};

/// Removes every row that starts before the day, whatever its status.
PurgeOutcome RemoveOlderThan(Store& store, const Date& day);

}  // namespace talnik
