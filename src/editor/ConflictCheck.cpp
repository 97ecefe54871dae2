#include "editor/ConflictCheck.h"

#include "editor/FieldText.h"
#include "store/Statements.h"
#include "store/Text.h"

#include <QCoreApplication>

#include <algorithm>

namespace talnik {
namespace {

bool Within(const Date& moment, const Date& from, const Date& to) {
  return from <= moment && moment <= to;
}

/// What a foreign file holds beyond the size of the field is not told.
QString TextOf(const ScheduleRecord& row) {
  return TrimBlanks(CutToSize(row.appointment, AppointmentSize));
}

/// An appointment that ends at 10:00 leaves 10:00 free.
Date LastMinute(const Date& start, const Date& end) {
  return end > start ? DateAdd(DateUnit::Minute, -1, end).value_or(end) : end;
}

QStringList ConflictsWithSpan(const ScheduleRecord& row, const ProposedTime& proposed, const Date& proposedEnd) {
  const Date& from = proposed.start;
  const Date& begin = *row.apptime;
  const QString message = QCoreApplication::translate("ConflictCheck", "Čas %1 až %2 zasahuje do úkolu %3")
                              .arg(proposed.startText, proposed.endText, TextOf(row));
  QStringList messages;
  if (!row.appdur) {
    if (Within(begin, from, proposedEnd)) messages << message;
    return messages;
  }
  const Date last = LastMinute(begin, *row.appdur);
  if (Within(begin, from, proposedEnd) || Within(last, from, proposedEnd)) messages << message;
  if (begin <= from && last >= proposedEnd) messages << message;
  return messages;
}

QStringList ConflictsWithMoment(const ScheduleRecord& row, const ProposedTime& proposed) {
  const QString text = TextOf(row);
  if (!row.appdur) {
    if (proposed.start != *row.apptime) return {};
    return {
        QCoreApplication::translate("ConflictCheck", "Čas %1 je již obsazen úkolem %2").arg(proposed.startText, text)};
  }
  if (!Within(proposed.start, *row.apptime, LastMinute(*row.apptime, *row.appdur))) return {};
  return {QCoreApplication::translate("ConflictCheck", "Čas %1 zasahuje do úkolu %2").arg(proposed.startText, text)};
}

}  // namespace

QString NoEndText() {
  return u"0:00:00"_qs;
}

std::optional<ProposedTime> ReadProposedTime(const QString& start, const QString& end, const Date& today) {
  const QString endText = TrimBlanks(end);
  const auto from = CDate(start, today);
  if (!from) return {};
  if (endText == NoEndText()) return ProposedTime{start, endText, *from, {}};
  const auto to = CDate(endText, today);
  if (!to) return {};
  return ProposedTime{start, endText, *from, to};
}

QStringList ConflictsWith(const ScheduleRecord& row, const ProposedTime& proposed) {
  if (!row.apptime || row.status == StatusDeleted) return {};
  return proposed.end ? ConflictsWithSpan(row, proposed, *proposed.end) : ConflictsWithMoment(row, proposed);
}

Statement RowsNear(const ProposedTime& proposed) {
  const Date end = proposed.end.value_or(proposed.start);
  const Date first = std::min(proposed.start, end);
  const Date last = std::max(proposed.start, end);
  // What ends at the very last moment touches it too.
  return statements::Touching(first, DateAdd(DateUnit::Minute, 1, last).value_or(last));
}

QStringList TimeConflicts(Store& store, const QString& start, const QString& end, const Date& today) {
  const auto proposed = ReadProposedTime(start, end, today);
  QStringList messages;
  if (!proposed) return messages;
  const bool read = store.ForEach(RowsNear(*proposed), [&](const ScheduleRecord& row) {
    messages << ConflictsWith(row, *proposed);
    return true;
  });
  return read ? messages : QStringList();
}

}  // namespace talnik
