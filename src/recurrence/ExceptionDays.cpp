#include "recurrence/ExceptionDays.h"

#include "store/Like.h"
#include "store/Statements.h"
#include "store/Store.h"
#include "store/Text.h"

#include <algorithm>

namespace talnik {

namespace {

/// An identity of our own making.
bool IsOwnIdentity(const QString& text) {
  const auto isDigit = [](QChar c) { return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f'); };
  return text.size() == 32 && std::all_of(text.begin(), text.end(), isDigit);
}

}  // namespace

bool NamesSeries(const QString& base, const QString& guid) {
  if (base.isEmpty()) return false;
  // Of the identities of one length only the equal one fits.
  if (IsOwnIdentity(base) && IsOwnIdentity(guid)) return base == guid;
  const QByteArray pattern = '*' + base.toUtf8() + '*';
  return LikePattern(pattern).Matches(guid.toUtf8());
}

std::int64_t SerialDay(const Date& date) {
  return date.DateValue().Seconds() / 86400;
}

std::optional<ExceptionDays> ExceptionDays::Read(Store& store) {
  ExceptionDays result;
  const bool read = store.ForEach(statements::Exceptions(), [&result](const ScheduleRecord& row) {
    const auto day = row.reftime ? row.reftime : row.apptime;
    const QString base = SeriesBase(row.guid);
    // What names no series holds no day: the empty text would fit every one.
    if (day && !base.isEmpty()) (IsOwnIdentity(base) ? result.own_ : result.foreign_)[base].push_back(SerialDay(*day));
    return true;
  });
  if (!read) return {};
  return result;
}

std::vector<std::int64_t> ExceptionDays::OfSeries(const QString& guid) const {
  Days held;
  const auto takeFitting = [&](const QHash<QString, Days>& days) {
    for (auto it = days.begin(); it != days.end(); ++it) {
      if (NamesSeries(it.key(), guid)) held.insert(held.end(), it->begin(), it->end());
    }
  };
  takeFitting(foreign_);
  if (IsOwnIdentity(guid)) {
    const Days days = own_.value(guid);
    held.insert(held.end(), days.begin(), days.end());
  } else {
    takeFitting(own_);
  }
  std::sort(held.begin(), held.end());
  return held;
}

}  // namespace talnik
