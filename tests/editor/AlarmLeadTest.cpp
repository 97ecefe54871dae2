#include "editor/AlarmLead.h"
#include "store/Text.h"

#include <gtest/gtest.h>

namespace talnik::test {
namespace {

Date LeadDate(const char* text) {
  return *CDate(QString::fromUtf8(text), Date());
}

/// The lead in words: "9", or "vlastní 2 týdnů", or the free moment in brackets.
std::string Shown(const AlarmLead& lead) {
  if (lead.userUnit != LeadCustom) return std::to_string(lead.userUnit);
  const QString shown = lead.freeMoment ? QString(u'[' + lead.value + u']')
                                        : QString(lead.value + u' ' + AlarmUnitTexts().at(lead.alarmUnit));
  return shown.toStdString();
}

TEST(AlarmLead, EveryFixedLeadGivesItsAlarmAndIsReadBackFromIt) {
  const QString start = u"15.1.2024 10:00:00"_qs;
  const QStringList alarms = {start,
                              u"15.1.2024 9:55:00"_qs,
                              u"15.1.2024 9:50:00"_qs,
                              u"15.1.2024 9:45:00"_qs,
                              u"15.1.2024 9:30:00"_qs,
                              u"15.1.2024 9:00:00"_qs,
                              u"15.1.2024 8:00:00"_qs,
                              u"15.1.2024 7:00:00"_qs,
                              u"14.1.2024 10:00:00"_qs,
                              u"13.1.2024 10:00:00"_qs,
                              u"12.1.2024 10:00:00"_qs,
                              u"8.1.2024 10:00:00"_qs};
  ASSERT_EQ(alarms.size(), UserUnitTexts().size() - 2);
  for (int place = LeadExact; place < LeadCustom; ++place) {
    const QString alarm = AlarmTextFromLead({place, 0, QString(), false}, start, Date());
    EXPECT_EQ(alarm.toStdString(), alarms.at(place - 1).toStdString());
    EXPECT_EQ(LeadOfAlarm(*CDate(alarm, Date()), *CDate(start, Date())).userUnit, place) << alarm.toStdString();
  }
}

TEST(AlarmLead, AnyOtherStoredAlarmIsShownAsACustomLead) {
  const struct {
    const char* start;
    const char* alarm;
    const char* shown;
  } cases[] = {
      {"15.1.2024 0:30", "14.1.2024 22:30", "7"},
      {"15.1.2024", "14.1.2024", "9"},
      // hours and minutes
      {"15.1.2024 10:00", "15.1.2024 6:00", "4 hodin"},
      {"15.1.2024 23:59", "15.1.2024 0:59", "23 hodin"},
      {"15.1.2024 10:00", "15.1.2024 9:59", "1 minut"},
      {"15.1.2024 10:00", "15.1.2024 9:01", "59 minut"},
      // the time of a longer lead hides its days
      {"15.1.2024 10:00", "14.1.2024 6:00", "4 hodin"},
      {"15.1.2024 10:00", "12.1.2024 9:40", "20 minut"},
      // neither whole hours nor below an hour
      {"15.1.2024 10:00", "15.1.2024 8:30", "[15.1.2024 8:30]"},
      {"15.1.2024 10:00", "1.1.2024 8:30", "[1.1.2024 8:30]"},
      // whole days
      {"15.1.2024 10:00", "11.1.2024 10:00", "4 dní"},
      {"15.1.2024 10:00", "9.1.2024 10:00", "6 dní"},
      {"15.1.2024 10:00", "1.1.2024 10:00", "2 týdnů"},
      {"31.1.2024", "3.1.2024", "4 týdnů"},
      {"31.1.2024", "31.12.2023", "31 dní"},
      {"31.3.2024", "28.2.2024", "32 dní"},    // falls on 31 January of the scale
      {"31.3.2024", "27.2.2024", "2 měsíců"},  // and this on 1 February
      {"15.6.2024", "20.4.2024", "2 měsíců"},  // 8 weeks, but a multiple of 4 is told in months
      {"15.6.2024", "13.4.2024", "9 týdnů"},
      {"31.12.2023", "31.12.2022", "1 roků"},
      {"31.12.2023", "31.12.2021", "2 roků"},
      {"31.12.2023", "2.1.2023", "1 roků"},  // 363 days fall into December
      // behind the start: below a day the same as before it
      {"15.1.2024 10:00", "15.1.2024 10:05", "2"},
      {"15.1.2024 10:00", "15.1.2024 13:00", "8"},
      {"15.1.2024 10:00", "15.1.2024 14:00", "4 hodin"},
      {"15.1.2024 10:00", "16.1.2024 10:00", "1 roků"},
      {"15.1.2024 10:00", "22.1.2024 10:00", "1 roků"},
      // less than a minute
      {"15.1.2024 10:00:30", "15.1.2024 10:00", "1 roků"},
      // the whole range
      {"31.12.9999", "1.1.1", "9999 roků"},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(Shown(LeadOfAlarm(LeadDate(row.alarm), LeadDate(row.start))), row.shown)
        << row.start << " / " << row.alarm;
  }
}

TEST(AlarmLead, TheListsGiveTheAlarmTime) {
  const struct {
    AlarmLead lead;
    const char* start;
    const char* alarm;
  } cases[] = {
      {{LeadNone, 0, {}, false}, "15.1.2024 10:00", ""},
      {{LeadExact, 0, {}, false}, "jakýkoli text", "jakýkoli text"},
      {{2, 0, {}, false}, "15.1.2024 0:03", "14.1.2024 23:58:00"},
      {{6, 0, {}, false}, "15.1.2024 1:00", "15.1.2024"},
      {{9, 0, {}, false}, "15.1.2024", "14.1.2024"},
      {{5, 0, {}, false}, "není datum", ""},
      {{LeadCustom, LeadMinutes, QString(), false}, "15.1.2024 10:00", "15.1.2024 10:00:00"},
      {{LeadCustom, LeadWeeks, u"2"_qs, false}, "15.1.2024 10:00", "1.1.2024 10:00:00"},
      {{LeadCustom, LeadMonths, u"1"_qs, false}, "31.3.2024 10:00", "29.2.2024 10:00:00"},
      {{LeadCustom, LeadYears, u"1"_qs, false}, "29.2.2024", "28.2.2023"},
      {{LeadCustom, 6, u"1"_qs, false}, "15.1.2024 10:00", ""},
      {{LeadCustom, LeadYears, u"9999"_qs, false}, "15.1.2024 10:00", ""},
      // a free moment is read as a count of months
      {{LeadCustom, LeadMonths, u"2.1.2024 8:30"_qs, true}, "15.1.2024 10:00", "15.11.2023 10:00:00"},
      {{LeadCustom, LeadMonths, u"2.9.2023 8:30"_qs, true}, "15.1.2024 10:00", "15.10.2023 10:00:00"},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(AlarmTextFromLead(row.lead, QString::fromUtf8(row.start), Date()).toStdString(), row.alarm)
        << row.start << ' ' << Shown(row.lead);
  }
}

TEST(AlarmLead, TheSpinnerStopsAtTheLimitOfItsUnit) {
  const struct {
    const char* before;
    int step;
    int unit;
    const char* after;
  } cases[] = {{"55", 10, LeadMinutes, "59"},
               {"20", 10, LeadHours, "23"},
               {"595", 10, LeadWeeks, "600"},
               {"3", -10, LeadYears, "0"},
               {"", 1, LeadDays, "1"}};
  for (const auto& c : cases)
    EXPECT_EQ(SpinLeadValue(QString::fromLatin1(c.before), c.step, c.unit).toStdString(), c.after) << c.before;
}

}  // namespace
}  // namespace talnik::test
