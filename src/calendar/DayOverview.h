#pragma once

#include "store/ScheduleRecord.h"

#include <QList>
#include <QString>

#include <memory>
#include <optional>

namespace talnik {

class Recordset;
class Store;

/// One line of the overview of a day: a record of whatever status, or a gap between records.
struct DayItem {
  std::optional<Date> start = {};
  std::optional<Date> end = {};
  QString text = {};
  QString wav = {};
  bool isGap = false;     ///< `text` is the marker of gaps then
  bool isHidden = false;  ///< the root of a series or a deleted occurrence: the editor does not show it

  /// True when the four columns of a record agree, which is all that tells records apart here.
  bool SameRecord(const DayItem& other) const;
};

/// The hour and the minute of a moment read as one number: 805 for 8:05.
int ToLong(const Date& moment);
/// The inverse: "08:05" for 805.
QString ToDate(int number);

/// The line of an item: its times and, with `withText`, its text. Gaps have times only.
QString FormatItem(const DayItem& item, bool withText);

/// "15.1.2024 - úkoly"
QString DayOverviewCaption(const Date& day);
/// What is said where there is nothing to read.
QString NoTasksText();
/// "Smazat záznam " + line + "?"
QString DeleteItemQuestion(const QString& line);

/// The records that begin on the day, end on it or last over it, in the order of their starts, roots and tombstones
/// among them; without those hidden ones that agree with an item of `deleted`. Nothing when the store cannot be read.
std::optional<QList<DayItem>> ItemsOfDay(Store& store, const Date& day, const QList<DayItem>& deleted);

/// The items and the free time between them, in the order of the day. A gap begins and ends on free minutes.
QList<DayItem> WithFreeTime(const QList<DayItem>& items, const Date& day);

/// How many records the editor steps over to open on the item at `index`. Nothing when it would have none to show.
std::optional<int> RecordsBefore(const QList<DayItem>& items, qsizetype index);

/// The rows with the item's record as the current one, the first live one if there is one. Nothing when it is not
/// there any more or the store cannot be read.
std::unique_ptr<Recordset> FindItem(Store& store, const DayItem& item);

/// Deletes the voice note of a record that is gone from the Record folder, unless a live record still names it.
void DeleteNoteOfItem(Store& store, const DayItem& item, const QString& recordFolder);

}  // namespace talnik
