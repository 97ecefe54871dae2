#include "editor/FieldText.h"
#include "editor/NoteFiles.h"
#include "editor/RecordSpeech.h"
#include "editor/SaveRecord.h"

#include <gtest/gtest.h>

namespace talnik::test {
namespace {

const Date Now = *Date::FromParts(2024, 1, 15, 8, 30);

EditorTexts PlanTexts(const char* start, const char* end, int lead = LeadNone, const char* text = "text") {
  return {QString::fromUtf8(text),
          QString(),
          QString::fromUtf8(start),
          QString::fromUtf8(end),
          {lead, LeadMinutes, QString(), false}};
}

TEST(SavePlan, WhatIsNoDateIsRefusedAndSoIsAnEndBeforeTheStart) {
  const struct {
    const char* start;
    const char* end;
    SaveRefusal refusal;
  } cases[] = {
      {"", "", SaveRefusal::BadDate},
      {"zítra", "", SaveRefusal::BadDate},
      {"31.2.2024", "", SaveRefusal::BadDate},
      {"15.1.2024 10:00", "zítra", SaveRefusal::BadDate},
      {"15.1.2024 10:00", "15.1.2024 9:59", SaveRefusal::EndBeforeStart},
      {"15.1.2024 10:00", "15.1.2024 10:00", SaveRefusal::None},
      {"15.1.2024 10:00", "   ", SaveRefusal::None},
      {"15.1.2024", "15.1.2024 9:00", SaveRefusal::None},
      {"1.1.1", "31.12.9999", SaveRefusal::None},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(PlanSave(PlanTexts(row.start, row.end), Now).refusal, row.refusal) << row.start << " / " << row.end;
  }
}

TEST(SavePlan, AnAlarmThatHasPassedIsLeftOutAndOneExactlyNowIsKept) {
  const struct {
    const char* start;
    int lead;
    bool passed;
    const char* alarm;
  } cases[] = {
      {"15.1.2024 8:30", LeadExact, false, "15.1.2024 8:30:00"},
      {"15.1.2024 8:29", LeadExact, true, ""},
      {"15.1.2024 8:35", 2, false, "15.1.2024 8:30:00"},
      {"15.1.2024 8:34", 2, true, ""},
      {"14.1.2024", LeadNone, false, ""},
  };
  for (const auto& row : cases) {
    const SavePlan plan = PlanSave(PlanTexts(row.start, "", row.lead), Now);
    EXPECT_EQ(plan.alarmPassed, row.passed) << row.start;
    EXPECT_EQ(plan.fields.alarm ? DateText(*plan.fields.alarm).toStdString() : "", row.alarm) << row.start;
  }
  EditorTexts endless = PlanTexts("15.1.2024 9:00", "", LeadCustom);
  endless.lead = {LeadCustom, LeadYears, u"99999999999"_qs, false};
  EXPECT_TRUE(PlanSave(endless, Now).alarmPassed) << "it would lie before the first of all dates";
}

TEST(SavePlan, SemicolonsGoAndEverythingElseStays) {
  const SavePlan plan = PlanSave(PlanTexts("15.1.2024", "", LeadNone, "a;b;'%*\"\n😀 "), Now);
  EXPECT_TRUE(plan.semicolonsGone);
  EXPECT_EQ(plan.fields.appointment, u"ab'%*\"\n😀 "_qs);
  EXPECT_FALSE(PlanSave(PlanTexts("15.1.2024", ""), Now).semicolonsGone);
}

TEST(RecordSpeech, TheDayIsSaidOnlyWhenItHasChanged) {
  const struct {
    const char* before;
    const char* start;
    const char* said;
  } cases[] = {
      {"15.1.2024 8:00", "15.1.2024 9:05", "9:05 text"},
      {"14.1.2024 8:00", "15.1.2024 9:05", "15. 1. 2024 9:05  text"},
      {"", "15.1.2024 9:05", "15. 1. 2024 9:05  text"},
      {"15.1.2024", "15.1.2024", "15. 1. 2024  text"},
      {"15.1.2024 8:00", "15.1.2024", "15. 1. 2024  text"},
      {"15.1.2024 8:00", "večer", "večer  text"},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(RecordBrief(QString::fromUtf8(row.before), QString::fromUtf8(row.start), u"text"_qs, Now).toStdString(),
              row.said)
        << row.before << " / " << row.start;
  }
  EXPECT_EQ(StartSpeech(u"15.1.2024 9:05"_qs, Now), u"9:05 datum 15.1.2024"_qs);
  EXPECT_EQ(StartSpeech(u"15.1.2024"_qs, Now), u" datum 15.1.2024"_qs);
}

TEST(NoteFiles, TheNameTellsTheMomentAndLiesInTheFolder) {
  EXPECT_EQ(NewSoundFileName(*Date::FromParts(2024, 11, 15, 8, 32, 41)), u"K15083.241"_qs);
  EXPECT_EQ(NewSoundFileName(*Date::FromParts(2024, 1, 5, 23, 7, 9)), u"A05237.09"_qs) << "a minute below ten";
  EXPECT_EQ(NotePath(u"K1.2"_qs, u"/r"_qs), u"/r/K1.2"_qs);
  EXPECT_EQ(NotePath(u"C:\\x\\K1.2"_qs, u"/r"_qs), u"C:\\x\\K1.2"_qs);
}

TEST(FieldText, OnlyBlanksAreTrimmed) {
  EXPECT_EQ(TrimBlanks(u"  a\n "_qs), u"a\n"_qs);
  EXPECT_EQ(TrimEndBlanks(u" a  "_qs), u" a"_qs);
  EXPECT_EQ(TrimBlanks(u"   "_qs), QString());
}

}  // namespace
}  // namespace talnik::test
