#include "recurrence/ExceptionDays.h"

#include "store/GuidSearch.h"
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
    if (day && !base.isEmpty()) result.byBase_[base].push_back(SerialDay(*day));
    return true;
  });
  if (!read || !result.ReadRoots(store)) return {};
  return result;
}

/// Many series with many exceptions are brought together at once: to try each with each would take too long.
bool ExceptionDays::ReadRoots(Store& store) {
  if (byBase_.isEmpty()) return true;
  GuidSearch roots;
  const bool read = store.ForEach(statements::RootsWithRule(), [&](const ScheduleRecord& root) {
    const QString guid = CutToSize(root.guid, GuidSize);
    if (guid.isEmpty() || byRoot_.contains(guid)) return true;
    roots.Add(guid);
    byRoot_.insert(guid, Days());
    return true;
  });
  for (auto base = byBase_.cbegin(); base != byBase_.cend(); ++base) {
    for (const QString& guid : roots.Containing(base.key())) {
      Days& held = byRoot_[guid];
      held.insert(held.end(), base->begin(), base->end());
    }
  }
  for (Days& held : byRoot_) std::sort(held.begin(), held.end());
  return read;
}

std::vector<std::int64_t> ExceptionDays::OfSeries(const QString& guid) const {
  const auto known = byRoot_.constFind(guid);
  return known == byRoot_.constEnd() ? Fitting(guid) : *known;
}

/// For rows that bear no guid of a root.
ExceptionDays::Days ExceptionDays::Fitting(const QString& guid) const {
  Days held;
  for (auto base = byBase_.cbegin(); base != byBase_.cend(); ++base) {
    if (NamesSeries(base.key(), guid)) held.insert(held.end(), base->begin(), base->end());
  }
  std::sort(held.begin(), held.end());
  return held;
}

}  // namespace talnik
