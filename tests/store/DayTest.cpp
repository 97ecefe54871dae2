#include "store/StoreFile.h"

#include <QRandomGenerator>

namespace talnik::test {
namespace {

using DayTest = StoreFile;

/// The day query as it is stated, without any help of indexes.
Statement Naive(const Date& day, bool visible) {
  const double midnight = day.DateValue().Serial();
  return {
      u"SELECT * FROM schedule WHERE (+apptime<?2 AND +apptime>=?1 OR +appdur>=?1 AND +appdur<?2 OR +apptime<?1 AND "
      "+appdur>?1) AND (?3 OR +status<8 OR +status IS NULL) ORDER BY apptime,status,rowid"_qs,
      {midnight, midnight + 1, !visible}};
}

/// Rows of every length, also backwards, with nothing in any column, and with edges exactly on midnight.
ScheduleRecord RandomRow(QRandomGenerator& random, int number) {
  constexpr std::int64_t day = 86400;
  const std::int64_t lengths[] = {0,        1,         3600,          day - 1,    day, day + 1, 8 * day, 9 * day,
                                  64 * day, 512 * day, 512 * day + 1, 1095 * day, -1,  -3600,   -day,    -400 * day};
  const std::optional<int> roles[] = {{}, 0, 0, 1, 2, 8, 9};
  ScheduleRecord row;
  row.appointment = QString::number(number);
  const auto wholeDay = *DateAdd(DateUnit::Day, random.bounded(1500), At(u"1.1.2023"_qs));
  const auto start = random.bounded(3) == 0 ? wholeDay : *DateAdd(DateUnit::Second, random.bounded(86400), wholeDay);
  if (random.bounded(20) != 0) row.apptime = start;
  const auto length = lengths[random.bounded(static_cast<quint32>(std::size(lengths)))];
  const auto jitter = random.bounded(2) == 0 ? 0 : random.bounded(86400) - 43200;
  if (random.bounded(10) != 0) row.appdur = DateAdd(DateUnit::Second, length + jitter, start);
  row.status = roles[random.bounded(static_cast<quint32>(std::size(roles)))];
  return row;
}

TEST_F(DayTest, CountsExactlyWhatTheDayQueryFinds) {
  QRandomGenerator random(20240115);
  store.InTransaction([&] {
    for (int i = 0; i < 2000; ++i) store.Insert(RandomRow(random, i));
    return true;
  });
  for (int i = -600; i < 2200; i += 11) {
    const Date day = *DateAdd(DateUnit::Day, i, At(u"1.1.2023 13:00"_qs));
    const QStringList naive = Texts(Naive(day, true));
    ASSERT_EQ(store.Number(statements::CountOfDay(day)), naive.size()) << DateText(day).toStdString();
    ASSERT_EQ(Texts(statements::OfDay(day)), naive) << DateText(day).toStdString();
    ASSERT_EQ(Texts(statements::OfDayAnyStatus(day)), Texts(Naive(day, false)));
  }
}

TEST_F(DayTest, FindsWhatTouchesASpan) {
  store.Insert(Row(u"before"_qs, u"15.1.2024 7:00"_qs, u"15.1.2024 7:59:59"_qs));
  store.Insert(Row(u"into"_qs, u"15.1.2024 7:00"_qs, u"15.1.2024 8:00"_qs));
  store.Insert(Row(u"over"_qs, u"1.1.2024"_qs, u"1.2.2024"_qs, StatusDeleted));
  store.Insert(Row(u"in"_qs, u"15.1.2024 8:30"_qs));
  store.Insert(Row(u"after"_qs, u"15.1.2024 9:00"_qs, u"15.1.2024 10:00"_qs));
  EXPECT_EQ(Found(statements::Touching(At(u"15.1.2024 8:00"_qs), At(u"15.1.2024 9:00"_qs))), "over into in");
}

}  // namespace
}  // namespace talnik::test
