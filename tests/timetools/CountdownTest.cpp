#include "timetools/Countdown.h"
#include "timetools/TimeWorld.h"

namespace talnik::test {
namespace {

TEST(Countdown, EndsThePresentMomentPlusTheTimeEntered) {
  struct Case {
    Date now;
    int hours, minutes;
    const char* end;
  };
  for (const Case& test :
       {Case{At(2024, 1, 15, 8, 30, 5), 0, 1, "15.1.2024 8:31:05"},
        Case{At(2024, 1, 15, 22, 30, 7), 1, 45, "16.1.2024 0:15:07"}, Case{At(2024, 1, 15, 23, 0), 1, 0, "16.1.2024"},
        Case{At(2023, 12, 31, 8, 0), 23, 59, "1.1.2024 7:59:00"}, Case{At(9999, 12, 31, 23, 0), 2, 0, ""}}) {
    EXPECT_EQ(EndOfCountdownText(test.hours, test.minutes, test.now).toStdString(), test.end);
  }
}

TEST(Countdown, IsSetReplacedCancelledOrRefused) {
  struct Case {
    QString hours, minutes;
    bool running;
    CountdownAnswer answer;
    const char* said;
    bool runs;
  };
  constexpr auto set = CountdownAnswer::Set;
  constexpr auto refused = CountdownAnswer::Refused;
  for (const Case& test :
       {Case{u"0"_qs, u"1"_qs, false, set, "minutky nastaveny", true},
        Case{u"1"_qs, QString(), true, set, "minutky nastaveny", true},
        Case{u"00"_qs, QString(), true, CountdownAnswer::Cancelled, "minutky zrušeny", false},
        Case{u"00"_qs, u"00"_qs, false, refused, "", false}, Case{QString(), u"75"_qs, true, refused, "", true},
        Case{u"24"_qs, u"0"_qs, false, refused, "", false}}) {
    Countdown countdown{test.running, At(2024, 1, 15, 9, 0), false};
    const auto answer = SetCountdown(countdown, test.hours, test.minutes, At(2024, 1, 15, 23, 59, 30));
    EXPECT_EQ(answer, test.answer);
    EXPECT_EQ(CountdownAnswerText(answer).toStdString(), test.said);
    EXPECT_EQ(countdown.CountdownRunning, test.runs);
    EXPECT_EQ(countdown.CountdownRung, answer == CountdownAnswer::Cancelled);
    EXPECT_EQ(countdown.CountdownEnd == At(2024, 1, 15, 9, 0), answer != set);
  }
  Countdown countdown;
  SetCountdown(countdown, u"0"_qs, u"1"_qs, At(2024, 1, 15, 23, 59, 30));
  EXPECT_EQ(countdown.CountdownEnd, At(2024, 1, 16, 0, 0, 30));
}

TEST(Countdown, TheTimeLeftIsShownAndSaidWithoutZeros) {
  struct Case {
    std::int64_t left;
    const char* shown;
    const char* said;
  };
  for (const Case& test :
       {Case{3600 + 5 * 60 + 9, "01:05:09", "1 hodin 5 minut 9 sekund "}, Case{60, "00:01:00", "1 minut "},
        Case{2 * 3600 + 1, "02:00:01", "2 hodin 1 sekund "}, Case{0, "00:00:00", ""}, Case{-5, "00:00:00", ""}}) {
    const Date now = At(2024, 1, 15, 23, 30);
    const Countdown countdown{true, Date::FromSeconds(now.Seconds() + test.left).value(), false};
    EXPECT_EQ(CountdownLeftText(countdown, now).toStdString(), test.shown);
    EXPECT_EQ(CountdownLeftSentence(countdown, now).toStdString(), test.said);
  }
}

}  // namespace
}  // namespace talnik::test
