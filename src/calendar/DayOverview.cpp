#include "calendar/DayOverview.h"

#include "store/Recordset.h"
#include "store/Statements.h"
#include "store/Text.h"

#include <QCoreApplication>
#include <QFile>
#include <QStringList>

#include <algorithm>
#include <bitset>
#include <utility>

namespace talnik {
namespace {

constexpr int EndOfDay = 2400;
constexpr int LastMinute = 2359;
constexpr int NumbersOfHour = 100;
constexpr int MinutesOfHour = 60;
const char* const GapMarker = "$FREE";

/// Indexed by ToLong; the numbers from 60 to 99 of each hundred are no minutes.
using OccupiedMap = std::bitset<EndOfDay + 1>;

struct Span {
  int from;
  int to;
};

bool IsMinute(int number) {
  return number < EndOfDay && number % NumbersOfHour < MinutesOfHour;
}

DayItem ItemOf(const ScheduleRecord& row) {
  // The first moment of the scale stands for no end, as nothing does.
  const auto end = row.appdur == Date() ? std::nullopt : row.appdur;
  return {row.apptime, end, row.appointment, row.wav, false, row.status.value_or(StatusSingle) >= StatusDeleted};
}

/// What an item takes of the day; nothing when it only touches it in a way that makes no sense.
std::optional<Span> SpanOf(const DayItem& item, const Date& day) {
  const auto next = DateAdd(DateUnit::Day, 1, day).value_or(day);
  const Date start = item.start.value_or(item.end.value_or(day));
  const Date end = std::max(start, item.end.value_or(start));
  if (start >= next || end < day) return {};
  const bool toTheEnd = end >= next || !start.HasTime();
  return Span{start < day ? 0 : ToLong(start), toTheEnd ? EndOfDay : ToLong(end)};
}

OccupiedMap Occupied(const QList<DayItem>& items, const Date& day) {
  OccupiedMap map;
  for (const DayItem& item : items) {
    const auto span = SpanOf(item, day);
    for (int number = span ? span->from : 1; span && number <= span->to; ++number) {
      map.set(static_cast<std::size_t>(number));
    }
  }
  return map;
}

DayItem Gap(const Span& minutes, const Date& day) {
  const auto moment = [&day](const QString& time) { return CDate(DayText(day) + u' ' + time, day); };
  const QString end = minutes.to == LastMinute ? u"23:59:59"_qs : ToDate(minutes.to);
  return {moment(ToDate(minutes.from)), moment(end), QString::fromLatin1(GapMarker), QString(), true, false};
}

QList<DayItem> Gaps(const OccupiedMap& occupied, const Date& day) {
  QList<DayItem> gaps;
  std::optional<Span> run;
  for (int number = 0; number <= EndOfDay; ++number) {
    if (!IsMinute(number) && number < EndOfDay) continue;
    if (IsMinute(number) && !occupied.test(static_cast<std::size_t>(number))) {
      run = Span{run ? run->from : number, number};
    } else if (run) {
      gaps << Gap(*std::exchange(run, std::nullopt), day);
    }
  }
  return gaps;
}

QString HourAndMinute(const Date& moment) {
  return ToDate(ToLong(moment));
}

/// The end behind the start: its time and, when it lies on another day, its date.
QString EndWords(const Date& end, bool otherDay, bool timed) {
  QStringList words{QCoreApplication::translate("DayOverview", "až")};
  if (timed) words << HourAndMinute(end);
  if (otherDay) words << DayText(end);
  return words.join(u' ');
}

/// A note is named by its path or by its name alone.
QStringList NamesOfNote(const QString& wav, const QString& recordFolder) {
  const QString name = ExtractFileName(wav);
  return {wav, name, recordFolder + u'/' + name};
}

}  // namespace

bool DayItem::SameRecord(const DayItem& other) const {
  return start == other.start && end == other.end && text == other.text && wav == other.wav;
}

int ToLong(const Date& moment) {
  return moment.Hour() * NumbersOfHour + moment.Minute();
}

QString ToDate(int number) {
  const QString digits = QString::number(number).rightJustified(4, u'0');
  return digits.left(2) + u':' + digits.mid(2);
}

QString FormatItem(const DayItem& item, bool withText) {
  QStringList words;
  // An end at the start is how a record without an end is kept.
  const bool hasEnd = item.end && (item.isGap || item.end != item.start);
  const bool timed = (item.start && item.start->HasTime()) || (hasEnd && item.end->HasTime()) || item.isGap;
  if (item.start && timed) words << HourAndMinute(*item.start);
  if (hasEnd) {
    const bool otherDay = !item.start || item.start->DateValue() != item.end->DateValue();
    words << EndWords(*item.end, otherDay, timed);
  }
  QString text = item.text;
  text.remove(u'\r').replace(u'\n', u' ');
  if (withText && !item.isGap && !text.isEmpty()) words << text;
  return words.join(u' ');
}

QString DayOverviewCaption(const Date& day) {
  return DayText(day) + u" - "_qs + QCoreApplication::translate("DayOverview", "úkoly");
}

QString NoTasksText() {
  return QCoreApplication::translate("DayOverview", "žádné úkoly");
}

QString DeleteItemQuestion(const QString& line) {
  return QCoreApplication::translate("DayOverview", "Smazat záznam ") + line + u'?';
}

std::optional<QList<DayItem>> ItemsOfDay(Store& store, const Date& day, const QList<DayItem>& deleted) {
  QList<DayItem> items;
  const bool read = store.ForEach(statements::OfDayAnyStatus(day), [&](const ScheduleRecord& row) {
    const DayItem item = ItemOf(row);
    const bool left = item.isHidden && std::any_of(deleted.begin(), deleted.end(),
                                                   [&item](const DayItem& gone) { return item.SameRecord(gone); });
    if (!left) items << item;
    return true;
  });
  return read ? std::optional(items) : std::nullopt;
}

QList<DayItem> WithFreeTime(const QList<DayItem>& items, const Date& day) {
  QList<DayItem> all = items + Gaps(Occupied(items, day), day);
  std::stable_sort(all.begin(), all.end(), [&day](const DayItem& one, const DayItem& other) {
    const auto place = [&day](const DayItem& item) {
      return SpanOf(item, day).value_or(Span{EndOfDay, EndOfDay}).from;
    };
    return place(one) < place(other);
  });
  return all;
}

std::optional<int> RecordsBefore(const QList<DayItem>& items, qsizetype index) {
  if (index < 0 || index >= items.size()) return {};
  int before = 0;
  int visible = 0;
  std::optional<int> twin;
  for (qsizetype i = 0; i < items.size(); ++i) {
    if (items[i].isHidden || items[i].isGap) continue;
    if (i < index) ++before;
    if (!twin && items[i].SameRecord(items[index])) twin = visible;
    ++visible;
  }
  if (visible == 0) return {};
  // What the editor does not show is opened by the record that it belongs to.
  return items[index].isHidden ? twin.value_or(std::min(before, visible - 1)) : before;
}

std::unique_ptr<Recordset> FindItem(Store& store, const DayItem& item) {
  auto rows = Recordset::Open(store, item.start ? statements::StartingAt(*item.start) : statements::All());
  if (!rows) return nullptr;
  const auto same = [&item](const ScheduleRecord& row) { return ItemOf(row).SameRecord(item); };
  const auto live = [&same](const ScheduleRecord& row) { return !ItemOf(row).isHidden && same(row); };
  return rows->FindFirst(live) || rows->FindFirst(same) ? std::move(rows) : nullptr;
}

void DeleteNoteOfItem(Store& store, const DayItem& item, const QString& recordFolder) {
  const QString wav = StripAtNul(item.wav).trimmed();
  const QString name = ExtractFileName(wav);
  if (name.isEmpty()) return;
  bool used = false;
  for (const QString& form : NamesOfNote(wav, recordFolder)) {
    const bool read = store.ForEach(statements::NamingSound(form), [&used](const ScheduleRecord& row) {
      used = used || row.status != StatusDeleted;
      return !used;
    });
    // A store that cannot be read may name the file all the same.
    used = used || !read;
  }
  if (!used) QFile::remove(recordFolder + u'/' + name);
}

}  // namespace talnik
